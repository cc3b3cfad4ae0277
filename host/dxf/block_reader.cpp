#include "dxf/block_reader.h"

#include <algorithm>
#include <string>

#include "db/database.h"
#include "db/drawing_roots.h"
#include "db/residence.h"
#include "win/casing.h"

namespace headless {
namespace {

constexpr const char* kModelSpace = "*Model_Space";
constexpr const char* kPaperSpace = "*Paper_Space";

/// R12 and before call the spaces $MODEL_SPACE and $PAPER_SPACE.
const char* oldSpaceName(std::string_view name) {
    if (name.size() != 12 || name.front() != '$') return nullptr;
    const std::string copy(name);
    if (_stricmp(copy.c_str(), "$MODEL_SPACE") == 0) return kModelSpace;
    if (_stricmp(copy.c_str(), "$PAPER_SPACE") == 0) return kPaperSpace;
    return nullptr;
}

/// The space whose record has that handle, null when it is something else.
AcDbBlockTableRecord* spaceWith(const AcDbDatabase& db, std::uint64_t handle) {
    auto* const block = Residence::peek<AcDbBlockTableRecord>(Residence::find(db, handle));
    return block != nullptr && block->isSpace() ? block : nullptr;
}

const DxfTag* nameOf(std::span<const DxfTag> tags) {
    const auto found =
        std::find_if(tags.begin(), tags.end(), [](const DxfTag& tag) { return tag.code == 2; });
    return found == tags.end() || found->text().empty() ? nullptr : &*found;
}

} // namespace

void BlockReader::readInBlocks(const RecordParts& parts) {
    const std::string_view name = parts.record.name;
    if (name == "BLOCK") {
        beginBlock(parts);
    } else if (name == "ENDBLK") {
        endBlock(parts.record);
        Residence::announce(context_.db, parts.handle);
    } else if (block_ == nullptr) {
        context_.leaveOut(parts, "it stands in no block");
    } else {
        entities_.read(parts, *block_);
    }
}

void BlockReader::endSection() {
    entities_.endSequence();
    if (block_ != nullptr) endBlock({});
}

void BlockReader::beginBlock(const RecordParts& parts) {
    endSection();
    block_ = blockOf(parts);
    if (block_ == nullptr) {
        context_.leaveOut(parts, "it has no name");
        return;
    }
    context_.addPiece(DxfPiece::Kind::kBlock, parts.record);
    blockBegin_ = parts.record;
    defined_.insert(block_);
    Residence::announce(context_.db, parts.handle);
    context_.filer.begin(parts);
    block_->readBegin(context_.filer);
}

void BlockReader::endBlock(const ScannedRecord& end) {
    entities_.endSequence();
    if (block_ == nullptr) {
        context_.report.add(end.place, 0, "a block ends that did not begin");
    } else if (end.name.empty()) {
        context_.report.add(blockBegin_.place, block_->objectId().handle(),
                            "the block ends without ENDBLK");
    }
    if (!end.name.empty()) context_.addPiece(DxfPiece::Kind::kBlockEnd, end);
    if (block_ != nullptr) block_->setEnds(spanOf(blockBegin_), spanOf(end));
    block_ = nullptr;
}

AcDbBlockTableRecord* BlockReader::blockOf(const RecordParts& parts) {
    const DxfTag* const name = nameOf(parts.own);
    if (name == nullptr) return nullptr;
    const std::uint64_t owner = parts.owner == nullptr ? 0 : parts.owner->handle();
    AcDbBlockTableRecord* const block = blockNamed(*name, owner);
    if (block == nullptr || !defined_.contains(block)) return block;

    // A second definition may be of another record of that name.
    auto* const owning = Residence::peek<AcDbBlockTableRecord>(Residence::find(context_.db, owner));
    if (owning != nullptr && !defined_.contains(owning)) return owning;
    context_.report.add(parts.record.place, parts.handle,
                        "block " + quote(name->text()) + " is defined twice");
    AcDbSymbolTable* const table = DrawingRoots::table(context_.db, AcDbBlockTableRecord::desc());
    return Residence::peek<AcDbBlockTableRecord>(context_.filer.makeRecord(*table, *name, 0));
}

AcDbBlockTableRecord* BlockReader::blockNamed(const DxfTag& name, std::uint64_t handle) {
    const char* const space = oldSpaceName(name.text());
    const DxfTag tag = space == nullptr ? name : textTag(space);
    AcDbSymbolTable* const table = DrawingRoots::table(context_.db, AcDbBlockTableRecord::desc());
    const std::wstring text = context_.filer.decoder().decode(tag.text());
    AcDbObjectId id = table->findRecord(text);
    if (id.isNull()) id = context_.filer.makeRecord(*table, tag, handle);
    return Residence::peek<AcDbBlockTableRecord>(id);
}

AcDbBlockTableRecord& BlockReader::spaceOf(const RecordParts& parts) {
    if (parts.owner != nullptr) {
        const std::uint64_t owner = parts.owner->handle();
        if (owner != lastOwner_) {
            lastOwner_ = owner;
            lastSpace_ = spaceWith(context_.db, owner);
        }
        if (lastSpace_ != nullptr) return *lastSpace_;
    }
    const bool inPaper = std::any_of(parts.own.begin(), parts.own.end(), [](const DxfTag& tag) {
        return tag.code == 67 && tag.integer() == 1;
    });
    AcDbBlockTableRecord*& space = inPaper ? paperSpace_ : modelSpace_;
    if (space == nullptr) space = blockNamed(textTag(inPaper ? kPaperSpace : kModelSpace), 0);
    return *space;
}

void BlockReader::readInSpace(const RecordParts& parts) { entities_.read(parts, spaceOf(parts)); }

void BlockReader::announceBlocks(ScanPosition section) {
    const DxfReadReport::Pause pause(context_.report);
    const ScanPosition here = context_.scanner.position();
    context_.scanner.seek(section);
    ScannedRecord record;
    context_.scanner.next(record); // the section's head
    while (context_.scanner.next(record) && record.name != "ENDSEC" && record.name != "SECTION") {
        if (record.name != "BLOCK") continue;
        if (const DxfTag* const name = nameOf(record.tags)) blockNamed(*name, 0);
    }
    context_.scanner.seek(here);
}

} // namespace headless
