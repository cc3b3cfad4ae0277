#include "dxf/record_writer.h"

#include <algorithm>

#include "db/block_table.h"
#include "db/database.h"
#include "db/drawing_roots.h"
#include "db/entity.h"
#include "db/object_data.h"
#include "db/opaque.h"
#include "db/residence.h"
#include "db/xrecord.h"
#include "dxf/application_values.h"

namespace headless {
namespace {

constexpr int kPaperSpace = 67;
constexpr int kLayout = 410;
constexpr int kOwner = 330;
constexpr int kBraces = 102;
constexpr std::string_view kEntity = "AcDbEntity";

int handleCode(std::string_view name) { return name == "DIMSTYLE" ? 105 : 5; }

/// The part of that name that comes after as many others of it.
const DxfOutPart* partLike(const DxfOutput& output, std::string_view name, std::size_t earlier) {
    for (const DxfOutPart& part : output.parts()) {
        if (part.application || part.name != name) continue;
        if (earlier-- == 0) return &part;
    }
    return nullptr;
}

std::size_t countBefore(std::span<const DxfOutPart> parts, const DxfOutPart& part) {
    return static_cast<std::size_t>(
        std::count_if(parts.data(), &part, [&](const DxfOutPart& other) {
            return !other.application && other.name == part.name;
        }));
}

std::span<const DxfOutTag> ownTags(const DxfOutput& output) {
    for (const DxfOutPart& part : output.parts()) {
        if (part.application) return output.tags().first(part.begin);
    }
    return output.tags();
}

} // namespace

RecordWriter::RecordWriter(AcDbDatabase& db, const DxfSource* source, const DrawingForm& form,
                           RecordSurroundings& surroundings, std::string& to)
    : source_(source), surroundings_(surroundings), groups_(form, to), now_(&db, form.version),
      before_(&db, form.version), scratch_(db, source == nullptr ? TextDecoder() : source->decoder),
      merge_(
          groups_, [this](GroupRole role) { putRole(role); },
          [this](const DxfOutTag& tag) { putTag(tag); },
          [this](std::uint64_t handle) { return surroundings_.isLost(handle); }),
      xdata_(groups_, scratch_, [this](std::wstring_view name) { mentionApplication(name); }) {
    if (source != nullptr) file_.emplace(source->input->bytes());
}

bool RecordWriter::inPaper(AcDbObjectId owner) {
    if (owner == lastOwner_) return lastInPaper_;
    lastOwner_ = owner;
    const AcDbObject* holder = Residence::peek(owner);
    if (AcDbEntity::cast(holder) != nullptr) holder = Residence::peek(holder->ownerId());
    const auto* const block = AcDbBlockTableRecord::cast(holder);
    lastInPaper_ = block != nullptr && block->isSpace() &&
                   block->objectId() != block->database()->modelSpaceId();
    return lastInPaper_;
}

RecordWriter::Identity RecordWriter::identityOf(const AcDbObject& object) {
    Identity identity;
    const bool entity = AcDbEntity::cast(&object) != nullptr;
    identity.cloned = Residence::record(object) == Residence::Record::kNew;
    // Tables of R12 state none even where entities do.
    if (groups_.form().handles && (entity || groups_.form().hasSubclasses()))
        identity.handle = object.objectId().handle();
    if (surroundings_.isInFile(object.ownerId())) identity.owner = object.ownerId();
    // Old files name the block for the owner of parts of its entities, and damaged ones anything;
    // these never get another owner.
    const bool owned = entity || AcDbSymbolTableRecord::cast(&object) != nullptr;
    identity.keepsOwner = !identity.cloned && owned;
    if (surroundings_.isInFile(object.extensionDictionary()))
        identity.dictionary = object.extensionDictionary();
    if (!file_ || identity.cloned || ObjectData::hasOwnReactors(object))
        identity.reactorsOf = &object;
    identity.inPaper = entity && inPaper(object.ownerId());
    const auto* const values = entity ? nullptr : AcDbXrecord::cast(&object);
    identity.asRead = values != nullptr && values->holdsFileValues();
    return identity;
}

RecordWriter::Identity RecordWriter::identityOf(const AcDbBlockTableRecord& block,
                                                const BlockEdge& edge) {
    Identity identity;
    identity.cloned = edge.source.length == 0;
    identity.handle = groups_.form().handles ? edge.handle : 0;
    if (surroundings_.isInFile(block.objectId())) identity.owner = block.objectId();
    identity.keepsOwner = true;
    identity.keepsDictionary = true;
    identity.inPaper = block.isSpace() && block.objectId() != block.database()->modelSpaceId();
    return identity;
}

void RecordWriter::write(const AcDbObject& object) {
    identity_ = identityOf(object);
    const SourceSpan span = Residence::source(object);
    const DxfOutput& now = now_.write(object);
    const DataItems all = file_ ? DataItems() : ObjectData::xdata(object);
    const DataItems* const items = file_ ? ObjectData::ownXdata(object) : &all;
    if (!file_ || !file_->read(span)) {
        writeUnmerged(object, now, items);
        return;
    }
    beginMerge();
    if (putInStep(now)) {
        putTail(items, now, nullptr);
        return;
    }
    const std::unique_ptr<AcDbObject> scratch = scratch_.read(object, *file_);
    if (scratch == nullptr) {
        writeUnmerged(object, now, items);
        return;
    }
    if (!span.plain) readApplicationValues(*scratch, file_->record().tags, scratch_);
    const DxfOutput& before = before_.write(*scratch);
    putMerged(now, before);
    putTail(items, now, &before);
}

std::uint32_t RecordWriter::writeLooks(const AcDbEntity& entity) {
    const SourceSpan span = Residence::source(entity);
    if (!file_ || !file_->readFirstSubclass(span)) return 0;
    identity_ = identityOf(entity);
    beginMerge();
    const auto parts = layout_.parts();
    if (!layout_.hasSubclasses() || parts[1].name != kEntity || !layout_.closesBraces()) return 0;

    DxfOutput& now = now_.output();
    now.clear();
    entity.AcDbEntity::dxfOutFields(&now_);
    std::string& to = groups_.buffer();
    const std::size_t begin = to.size();
    putHead();
    if (!merge_.putInStep(parts[1], {now.tags(), {}, now.parts().front().codes})) {
        to.resize(begin);
        return 0;
    }
    return static_cast<std::uint32_t>(file_->offset(parts[1].end) - span.offset);
}

void RecordWriter::writeUnmerged(const AcDbObject& object, const DxfOutput& now,
                                 const DataItems* items) {
    identity_.name = dxfName(object);
    putNew(now);
    if (putMore_) putMore_(object, now);
    xdata_.put(nullptr, 0, items, now, nullptr);
}

void RecordWriter::putTail(const DataItems* items, const DxfOutput& now, const DxfOutput* before) {
    groups_.buffer() += file_->bytes(layout_.tail(), layout_.xdata());
    xdata_.put(&*file_, layout_.xdata(), items, now, before);
}

void RecordWriter::writeBlockBegin(const AcDbBlockTableRecord& block, const BlockEdge& edge,
                                   bool otherAttributes) {
    const bool withAttributes = block.hasVariableAttributes();
    identity_ = identityOf(block, edge);
    identity_.name = "BLOCK";
    now_.output().clear();
    block.writeBegin(now_, withAttributes);
    if (!file_ || !file_->read(edge.source)) {
        putNew(now_.output());
        return;
    }
    scratch_.show(*file_);
    AcDbBlockTableRecord scratch;
    scratch.readBegin(scratch_);
    before_.output().clear();
    scratch.writeBegin(before_, withAttributes != otherAttributes);
    beginMerge();
    putMerged(now_.output(), before_.output());
    groups_.buffer() += file_->bytes(layout_.tail(), file_->size());
}

void RecordWriter::writeBlockEnd(const AcDbBlockTableRecord& block, const BlockEdge& edge) {
    identity_ = identityOf(block, edge);
    identity_.name = "ENDBLK";
    now_.output().clear();
    block.writeEnd(now_);
    putNew(now_.output());
}

void RecordWriter::writeSequenceEnd(const AcDbEntity& owner, std::uint64_t handle) {
    identity_ = {};
    identity_.name = "SEQEND";
    identity_.cloned = true;
    if (groups_.form().handles) identity_.handle = handle;
    identity_.owner = owner.objectId();
    identity_.inPaper = inPaper(owner.ownerId());
    now_.output().clear();
    now_.output().subclass(kEntity, {});
    now_.output().symbol(8, owner.layerId());
    putNew(now_.output());
}

bool RecordWriter::namesRenamed(const AcDbObject& object) {
    const SourceSpan span = Residence::source(object);
    if (!span.plain && file_->read(span) && xdata_.namesRenamed(*file_)) return true;
    const auto tags = now_.write(object).tags();
    return std::any_of(tags.begin(), tags.end(), [&](const DxfOutTag& tag) {
        return tag.kind == DxfOutTag::Kind::kSymbol && merge_.renamed().contains(tag.stub);
    });
}

void RecordWriter::putNew(const DxfOutput& now) {
    merging_ = false;
    groups_.name(0, identity_.name);
    if (identity_.handle != 0) groups_.handle(handleCode(identity_.name), identity_.handle);
    if (groups_.form().hasSubclasses()) {
        putDictionary();
        putReactors();
        putOwner();
    }
    for (const DxfOutPart& part : now.parts()) {
        if (!part.application) putNewPart(part, now.tagsOf(part));
    }
}

void RecordWriter::putNewPart(const DxfOutPart& part, std::span<const DxfOutTag> tags) {
    const bool marked = groups_.form().hasSubclasses();
    if (marked && !tags.empty()) {
        putTag(tags.front());
        tags = tags.subspan(1);
    }
    if (identity_.inPaper && part.name == kEntity) groups_.integer(kPaperSpace, 1);
    for (const DxfOutTag& tag : tags)
        putTag(tag);
}

void RecordWriter::beginMerge() {
    merging_ = true;
    layout_.describe(*file_);
    merge_.begin(*file_, layout_, source_->decoder, surroundings_.anyLost());
}

bool RecordWriter::putInStep(const DxfOutput& now) {
    if (identity_.cloned || !layout_.hasSubclasses()) return false;
    std::string& to = groups_.buffer();
    const std::size_t begin = to.size();
    putHead();
    auto next = now.parts().begin();
    bool inStep = true;
    for (const FilePart& part : layout_.parts().subspan(1)) {
        if (next == now.parts().end() || part.name != next->name) {
            merge_.keep(part.begin, part.end);
            continue;
        }
        inStep =
            inStep && merge_.putInStep(part, {now.tagsOf(*next), {}, next->codes, next->whole});
        ++next;
    }
    if (inStep && next == now.parts().end()) return true;
    to.resize(begin);
    return false;
}

/// True for the head of a record that would become as it is in the file, as nearly all do.
bool RecordWriter::keepsHead() const {
    const std::size_t none = file_->size();
    const std::size_t handle = layout_.handle();
    return !identity_.cloned && layout_.hasSubclasses() && identity_.keepsOwner &&
           layout_.dictionary() == none && identity_.dictionary.isNull() &&
           layout_.reactors() == none && identity_.reactorsOf == nullptr && handle != none &&
           (identity_.handle == 0 || (*file_)[handle].handle() == identity_.handle);
}

void RecordWriter::putHead() {
    if (keepsHead()) {
        const std::size_t begin = file_->record().begin;
        const std::size_t end = file_->offset(layout_.parts().front().end);
        groups_.buffer() += source_->input->bytes().substr(begin, end - begin);
        return;
    }
    groups_.buffer() += file_->nameBytes();
    if (layout_.handle() == file_->size() && identity_.cloned) putHandle();
    if (!layout_.hasSubclasses()) return; // All of it is a head then, merged as one.
    const FilePart& head = layout_.parts().front();
    merge_.keep(head.begin, head.end);
}

const FilePart* RecordWriter::filePartLike(std::string_view name, std::size_t earlier) const {
    for (const FilePart& part : layout_.parts().subspan(1)) {
        if (part.name == name && earlier-- == 0) return &part;
    }
    return nullptr;
}

void RecordWriter::putMerged(const DxfOutput& now, const DxfOutput& before) {
    if (identity_.cloned) dropPromise(now);
    putHead();
    if (layout_.hasSubclasses())
        putParts(now, before);
    else
        putFlattened(now, before);
}

/// Attributes that a reference promises (66) without having any are not promised by its clone.
void RecordWriter::dropPromise(const DxfOutput& now) {
    constexpr int kPartsFollow = 66;
    const auto promises = [](const auto& group) { return group.code == kPartsFollow; };
    if (std::any_of(now.tags().begin(), now.tags().end(), promises)) return;
    for (std::size_t at = 0; at < layout_.tail(); ++at) {
        if (promises((*file_)[at])) layout_.drop(at);
    }
}

/// The space that the record was cloned from is not the clone's.
void RecordWriter::takePlace(const FilePart& part, PartValues& values) {
    if (!identity_.cloned) return;
    values.newPlace = true;
    values.inPaper = identity_.inPaper;
    for (std::size_t at = part.begin; at < part.end; ++at) {
        const int code = (*file_)[at].code;
        if (code == kPaperSpace || code == kLayout) layout_.drop(at);
    }
}

void RecordWriter::putFlattened(const DxfOutput& now, const DxfOutput& before) {
    std::vector<std::int16_t> codes;
    for (const DxfOutPart& part : now.parts())
        codes.insert(codes.end(), part.codes.begin(), part.codes.end());
    const bool whole = std::any_of(now.parts().begin(), now.parts().end(),
                                   [](const DxfOutPart& p) { return p.whole && !p.application; });
    if (whole) {
        for (const DxfOutTag& tag : ownTags(now))
            codes.push_back(tag.code);
        for (const DxfOutTag& tag : ownTags(before))
            codes.push_back(tag.code);
    }
    const FilePart& all = layout_.parts().front();
    PartValues values{ownTags(now), ownTags(before), codes};
    takePlace(all, values);
    merge_.merge(all, values);
}

void RecordWriter::putParts(const DxfOutput& now, const DxfOutput& before) {
    const auto parts = now.parts();
    std::size_t next = 0; // part of the object
    const auto tagsBefore = [&](const DxfOutPart& part) {
        const DxfOutPart* const old = partLike(before, part.name, countBefore(parts, part));
        return old == nullptr ? std::span<const DxfOutTag>() : before.tagsOf(*old);
    };
    const auto putUnmatched = [&](std::size_t end) {
        for (; next < end; ++next) {
            const DxfOutPart& part = parts[next];
            if (part.application || filePartLike(part.name, countBefore(parts, part)) != nullptr)
                continue;
            // What is written as before stands in the record under another subclass.
            const auto tags = now.tagsOf(part);
            if (!merge_.same(tags, tagsBefore(part))) putNewPart(part, tags);
        }
    };
    for (const FilePart& part : layout_.parts().subspan(1)) {
        const auto earlier = static_cast<std::size_t>(std::count_if(
            layout_.parts().data(), &part, [&](const FilePart& p) { return p.name == part.name; }));
        const DxfOutPart* const matched = partLike(now, part.name, earlier);
        if (matched == nullptr) {
            merge_.keep(part.begin, part.end);
            continue;
        }
        putUnmatched(static_cast<std::size_t>(matched - parts.data()));
        PartValues values{now.tagsOf(*matched), tagsBefore(*matched), matched->codes,
                          matched->whole, identity_.asRead};
        if (part.name == kEntity) takePlace(part, values);
        merge_.merge(part, values);
    }
    putUnmatched(parts.size());
}

void RecordWriter::putRole(GroupRole role) {
    switch (role) {
    case GroupRole::kHandle:
        putHandle();
        break;
    case GroupRole::kOwner:
        putOwner();
        break;
    case GroupRole::kReactors:
        if (identity_.reactorsOf == nullptr || statesReactors())
            putBraces(layout_.reactors());
        else
            putReactors();
        break;
    case GroupRole::kDictionary:
        if (identity_.keepsDictionary)
            putBraces(layout_.dictionary());
        else
            putDictionary();
        break;
    case GroupRole::kOwn:
    case GroupRole::kKept:
    case GroupRole::kDropped:
        break;
    }
}

/// True when the record of the file lists the very reactors that the object has.
bool RecordWriter::statesReactors() const {
    std::vector<AcDbObjectId> reactors = ObjectData::reactors(*identity_.reactorsOf);
    std::size_t at = layout_.reactors() + 1;
    for (const AcDbObjectId id : reactors) {
        if (at >= file_->size() || (*file_)[at].handle() != id.handle()) return false;
        ++at;
    }
    return at < file_->size() && (*file_)[at].code == kBraces;
}

void RecordWriter::putBraces(std::size_t open) {
    std::size_t end = open + 1;
    while (end < file_->size() &&
           !((*file_)[end - 1].code == kBraces && (*file_)[end - 1].text() == "}"))
        ++end;
    groups_.buffer() += file_->bytes(open, end);
}

void RecordWriter::putHandle() {
    const std::size_t at = layout_.handle();
    const bool stated = at < file_->size();
    const bool kept =
        identity_.handle == 0 || (stated && (*file_)[at].handle() == identity_.handle);
    if (stated && kept)
        groups_.buffer() += file_->bytes(at, at + 1);
    else if (identity_.handle != 0)
        groups_.handle(handleCode(file_->record().name), identity_.handle);
    if (!groups_.form().hasSubclasses()) return;
    if (layout_.dictionary() == file_->size()) putDictionary();
    if (layout_.reactors() == file_->size()) putReactors();
    if (layout_.owner() == file_->size() && identity_.cloned) putOwner();
}

void RecordWriter::putOwner() {
    const std::size_t at = layout_.owner();
    const bool stated = merging_ && at < file_->size();
    if (stated && !identity_.cloned &&
        (identity_.keepsOwner || identity_.owner.isNull() ||
         (*file_)[at].handle() == identity_.owner.handle())) {
        groups_.buffer() += file_->bytes(at, at + 1);
        return;
    }
    if (!identity_.owner.isNull()) groups_.handle(kOwner, identity_.owner.handle());
}

void RecordWriter::putReactors() {
    if (identity_.reactorsOf == nullptr) return;
    std::vector<AcDbObjectId> reactors = ObjectData::reactors(*identity_.reactorsOf);
    std::erase_if(reactors, [this](AcDbObjectId id) { return !surroundings_.isInFile(id); });
    if (reactors.empty()) return;
    groups_.name(kBraces, "{ACAD_REACTORS");
    for (const AcDbObjectId id : reactors)
        groups_.handle(kOwner, id.handle());
    groups_.name(kBraces, "}");
}

void RecordWriter::putDictionary() {
    constexpr int kHardOwner = 360;
    if (identity_.dictionary.isNull()) return;
    groups_.name(kBraces, "{ACAD_XDICTIONARY");
    groups_.handle(kHardOwner, identity_.dictionary.handle());
    groups_.name(kBraces, "}");
}

void RecordWriter::mentionApplication(std::wstring_view name) {
    AcDbDatabase& db = *scratch_.database();
    const AcDbObjectId id =
        DrawingRoots::table(db, AcDbRegAppTableRecord::desc())->findRecord(std::wstring(name));
    if (!id.isNull()) surroundings_.mentioned(id);
}

void RecordWriter::putTag(const DxfOutTag& tag) {
    const bool named = tag.kind == DxfOutTag::Kind::kSymbol || tag.kind == DxfOutTag::Kind::kHandle;
    if (named && tag.stub != nullptr && !tag.stub->inFile) surroundings_.mentioned(tag.id());
    groups_.tag(tag);
}

} // namespace headless
