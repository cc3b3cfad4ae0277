#include "dxf/context.h"

#include <limits>

#include "db/database.h"
#include "db/opaque.h"
#include "db/residence.h"

namespace headless {

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
    Residence::setSource(object, spanOf(parts.record));
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
    std::string text = "the handle belongs to a " +
                       (holding == nullptr ? "record" : std::string(dxfName(*holding)));
    const bool entityComes = AcDbEntity::cast(Residence::peek(id)) != nullptr;
    if (entityComes && AcDbEntity::cast(holding) == nullptr) {
        Residence::exchangeHandles(id, holder);
        text += " too, which gets " + handleText(holder.handle());
    } else {
        text +=
            " already; this " + std::string(parts.record.name) + " gets " + handleText(id.handle());
    }
    report.add(parts.record.place, wanted, text);
}

} // namespace headless
