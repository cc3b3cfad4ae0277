#include "dxf/scratch_filer.h"

#include "db/database.h"
#include "db/drawing_roots.h"
#include "db/opaque.h"
#include "db/residence.h"

namespace headless {
namespace {

std::unique_ptr<AcDbObject> makeLike(const AcDbObject& object) {
    if (const auto* const opaque = OpaqueEntity::cast(&object))
        return std::make_unique<OpaqueEntity>(opaque->dxfName());
    if (const auto* const opaque = OpaqueObject::cast(&object))
        return std::make_unique<OpaqueObject>(opaque->dxfName());
    return std::unique_ptr<AcDbObject>(static_cast<AcDbObject*>(object.isA()->create()));
}

} // namespace

ScratchFiler::ScratchFiler(AcDbDatabase& db, const TextDecoder& decoder)
    : AcDbDxfFiler(&db), decoder_(decoder), splitter_(report_) {}

void ScratchFiler::show(const RecordGroups& groups) {
    setRecord(splitter_.split(groups.record(), true).own);
}

std::unique_ptr<AcDbObject> ScratchFiler::read(const AcDbObject& object,
                                               const RecordGroups& groups) {
    std::unique_ptr<AcDbObject> scratch = makeLike(object);
    if (scratch == nullptr) return nullptr;
    show(groups);
    if (scratch->dxfInFields(this) != Acad::eOk) return nullptr;
    return scratch;
}

std::wstring ScratchFiler::text(const DxfTag& tag) const {
    if (tag.kind != DxfTag::Kind::kText) return {};
    return decoder_.decode({tag.bytes, tag.length});
}

AcDbObjectId ScratchFiler::objectId(const DxfTag& handle) {
    return Residence::announce(*database(), handle.handle());
}

AcDbObjectId ScratchFiler::symbolId(AcRxClass* recordClass, const DxfTag& name) {
    const std::string_view bytes = name.text();
    if (bytes.empty()) return {};
    const AcDbObjectId known = names_.find(recordClass, bytes);
    if (!known.isNull()) return known;
    AcDbSymbolTable* const table = DrawingRoots::table(*database(), recordClass);
    if (table == nullptr) return {};
    const AcDbObjectId id = table->findRecord(decoder_.decode(bytes));
    if (!id.isNull()) names_.keep(recordClass, bytes, id);
    return id;
}

void ScratchFiler::report(const DxfTag& /*tag*/, std::string_view /*problem*/) {}

} // namespace headless
