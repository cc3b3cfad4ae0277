#include "dxf/context.h"

#include <limits>

#include "db/database.h"
#include "db/opaque.h"
#include "db/residence.h"

namespace headless {
namespace {

std::string kindOf(const AcDbObject& object) {
    const std::string_view name = dxfName(object);
    return name.empty() ? "TABLE" : std::string(name);
}

} // namespace

SourceSpan spanOf(const ScannedRecord& record) {
    const std::uint64_t length = record.end - record.begin;
    if (length > std::numeric_limits<std::uint32_t>::max()) return {};
    return {record.begin, static_cast<std::uint32_t>(length)};
}

std::string_view textOf(std::span<const DxfTag> tags, int code) {
    for (const DxfTag& tag : tags) {
        if (tag.code == code) return tag.text();
    }
    return {};
}

DxfTag textTag(std::string_view text) {
    DxfTag tag;
    tag.bytes = text.data();
    tag.length = static_cast<std::uint32_t>(text.size());
    return tag;
}

void ReadContext::addPiece(DxfPiece::Kind kind, const ScannedRecord& record) {
    source.pieces.push_back({kind, record.name, spanOf(record)});
}

void ReadContext::leaveOut(const RecordParts& parts, std::string_view why) {
    addPiece(DxfPiece::Kind::kUnread, parts.record);
    report.add(parts.record.place, parts.handle,
               quote(parts.record.name) + " left out: " + std::string(why));
}

bool ReadContext::fill(AcDbObject& object, const RecordParts& parts) {
    filer.begin(parts);
    const Acad::ErrorStatus status = object.dxfInFields(&filer);
    if (status != Acad::eOk) {
        leaveOut(parts, "it makes no sense");
        return false;
    }
    SourceSpan span = spanOf(parts.record);
    span.plain = parts.own.size() == parts.record.tags.size();
    Residence::setSource(object, span);
    takeExtensionDictionary(object, parts);
    return true;
}

void ReadContext::takeExtensionDictionary(AcDbObject& object, const RecordParts& parts) {
    if (parts.extensionDictionary == 0) return;
    Residence::setExtensionDictionary(object, Residence::announce(db, parts.extensionDictionary));
}

bool ReadContext::isGenerated(AcDbObjectId id) const {
    const AcDbObject* const object = Residence::peek(id);
    const bool fromFile = object != nullptr && Residence::source(*object).length != 0;
    return !fromFile || generated_.contains(id.handle());
}

void ReadContext::settleHandle(AcDbObjectId id, const RecordParts& parts) {
    const Adesk::UInt64 wanted = parts.handle;
    handlesStated_ = handlesStated_ || wanted != 0;
    if (wanted == 0 && handlesStated_) generated_.insert(id.handle());
    if (wanted == 0 || id.handle() == wanted) return;

    const AcDbObjectId holder = Residence::find(db, wanted);
    const AcDbObject* const holding = Residence::peek(holder);
    if (isGenerated(holder)) { // Nobody else knows that one by its handle.
        generated_.erase(wanted);
        generated_.insert(id.handle());
        Residence::exchangeHandles(id, holder);
        return;
    }
    const bool entityComes = AcDbEntity::cast(Residence::peek(id)) != nullptr;
    const bool comingKeeps = entityComes && AcDbEntity::cast(holding) == nullptr;
    if (comingKeeps) Residence::exchangeHandles(id, holder);
    const Adesk::UInt64 other = comingKeeps ? holder.handle() : id.handle();
    generated_.insert(other);
    const std::string loser =
        comingKeeps ? kindOf(*holding) : "this " + std::string(parts.record.name);
    const std::string text =
        "the handle is " + kindOf(*holding) + "'s already; " + loser + " gets " + handleText(other);
    report.add(parts.record.place, wanted, text);
}

} // namespace headless
