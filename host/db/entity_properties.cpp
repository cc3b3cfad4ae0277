// Layer, colour, linetype and what else every entity has.

#include "db/block_table.h"
#include "db/database.h"
#include "db/dxf_output.h"
#include "db/entity.h"
#include "db/layer_table.h"
#include "db/line_weights.h"
#include "db/linetype_table.h"
#include "db/object_data.h"
#include "db/resbuf.h"
#include "db/residence.h"
#include "db/state.h"
#include "db/subentities.h"
#include "rx/ac_string.h"

namespace {

using headless::DxfTag;
using headless::isLineWeight;
using headless::Residence;

/// The database that names are looked up in: the entity's own, else the working one.
AcDbDatabase* databaseOf(const AcDbEntity& entity) {
    AcDbDatabase* const own = entity.database();
    return own != nullptr ? own : acdbHostApplicationServices()->workingDatabase();
}

/// The record of that name, null when there is none.
AcDbObjectId recordNamed(AcDbObjectId tableId, const ACHAR* name) {
    const auto* const table = Residence::peek<AcDbSymbolTable>(tableId);
    return table == nullptr || name == nullptr ? AcDbObjectId() : table->findRecord(name);
}

std::wstring nameOfRecord(AcDbObjectId id) {
    const auto* const record = Residence::peek<AcDbSymbolTableRecord>(id);
    return record == nullptr ? std::wstring() : record->nameOf();
}

} // namespace

AcDbObjectId AcDbEntity::blockId() const {
    assertReadEnabled();
    const bool inBlock = Residence::peek<AcDbBlockTableRecord>(ownerId()) != nullptr;
    return inBlock ? ownerId() : AcDbObjectId();
}

ACHAR* AcDbEntity::layer() const { return acutNewString(nameOfRecord(look(layerId_)).c_str()); }

Acad::ErrorStatus AcDbEntity::layer(AcString& name) const {
    name = nameOfRecord(look(layerId_)).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* name, bool doSubents, bool allowHiddenLayer) {
    const AcDbDatabase* const db = databaseOf(*this);
    if (db == nullptr) return Acad::eNoDatabase;
    const AcDbObjectId id = recordNamed(db->layerTableId(), name);
    return id.isNull() ? Acad::eKeyNotFound : setLayer(id, doSubents, allowHiddenLayer);
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId layer, bool doSubents, bool allowHiddenLayer) {
    if (layer.isNull()) return Acad::eNullObjectId;
    const auto* const record = Residence::peek<AcDbLayerTableRecord>(layer);
    if (record == nullptr) return Acad::eWrongObjectType;
    if (database() != nullptr && layer.database() != database()) return Acad::eWrongDatabase;
    if (record->isHiddenLayer() && !allowHiddenLayer) return Acad::eInvalidInput;
    changeLook(layerId_, layer);
    if (doSubents) forEachSubentity([&](AcDbEntity& part) { part.layerId_ = layer; });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color, bool doSubents,
                                       AcDbDatabase* /*db*/) {
    assertLooksWriteEnabled();
    takeColor(color.entityColor(), {});
    if (doSubents) forEachSubentity([&](AcDbEntity& part) { part.takeColor(color_, {}); });
    return Acad::eOk;
}

void AcDbEntity::takeColor(const AcCmEntityColor& color, std::wstring_view name) {
    color_ = color;
    headless::ObjectData::setColorName(*this, name);
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 index, bool doSubents) {
    constexpr Adesk::UInt16 kByLayer = 256;
    AcCmColor color;
    if (index > kByLayer || color.setColorIndex(index) != Acad::eOk) return Acad::eBadColorIndex;
    return setColor(color, doSubents);
}

Acad::ErrorStatus AcDbEntity::setTransparency(const AcCmTransparency& transparency,
                                              bool doSubents) {
    changeLook(transparency_, transparency);
    if (doSubents) forEachSubentity([&](AcDbEntity& part) { part.transparency_ = transparency; });
    return Acad::eOk;
}

ACHAR* AcDbEntity::linetype() const {
    const AcDbObjectId id = look(linetypeId_);
    return acutNewString(id.isNull() ? L"ByLayer" : nameOfRecord(id).c_str());
}

Acad::ErrorStatus AcDbEntity::setLinetype(const ACHAR* name, bool doSubents) {
    const AcDbDatabase* const db = databaseOf(*this);
    if (db == nullptr) return Acad::eNoDatabase;
    const AcDbObjectId id = recordNamed(db->linetypeTableId(), name);
    return id.isNull() ? Acad::eKeyNotFound : setLinetype(id, doSubents);
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId linetype, bool doSubents) {
    if (linetype.isNull()) return Acad::eNullObjectId;
    if (Residence::peek<AcDbLinetypeTableRecord>(linetype) == nullptr)
        return Acad::eWrongObjectType;
    if (database() != nullptr && linetype.database() != database()) return Acad::eWrongDatabase;
    changeLook(linetypeId_, linetype);
    if (doSubents) forEachSubentity([&](AcDbEntity& part) { part.linetypeId_ = linetype; });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double scale, bool doSubents) {
    if (!(scale > 0.0)) return Acad::eInvalidInput;
    changeLook(linetypeScale_, scale);
    if (doSubents) forEachSubentity([&](AcDbEntity& part) { part.linetypeScale_ = scale; });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight weight, bool doSubents) {
    if (!isLineWeight(weight)) return Acad::eInvalidInput;
    changeLook(lineWeight_, weight);
    if (doSubents) forEachSubentity([&](AcDbEntity& part) { part.lineWeight_ = weight; });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setMaterial(AcDbObjectId material, bool doSubents) {
    changeLook(materialId_, material);
    if (doSubents) forEachSubentity([&](AcDbEntity& part) { part.materialId_ = material; });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility visibility, bool doSubents) {
    changeLook(visibility_, visibility);
    if (doSubents) forEachSubentity([&](AcDbEntity& part) { part.visibility_ = visibility; });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setPropertiesFrom(const AcDbEntity* other, bool doSubents) {
    if (other == nullptr) return Acad::eNullObjectPointer;
    other->assertReadEnabled();
    assertLooksWriteEnabled();
    copyProperties(*other);
    if (doSubents) forEachSubentity([&](AcDbEntity& part) { part.copyProperties(*other); });
    return Acad::eOk;
}

void AcDbEntity::copyProperties(const AcDbEntity& other) {
    layerId_ = other.layerId_;
    linetypeId_ = other.linetypeId_;
    materialId_ = other.materialId_;
    takeColor(other.color_, headless::ObjectData::colorName(other));
    transparency_ = other.transparency_;
    lineWeight_ = other.lineWeight_;
    visibility_ = other.visibility_;
    linetypeScale_ = other.linetypeScale_;
}

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* db) {
    assertLooksWriteEnabled();
    if (db == nullptr) db = databaseOf(*this);
    if (db == nullptr) return;
    layerId_ = db->clayer();
    color_ = db->cecolor().entityColor();
    linetypeId_ = db->celtype();
    linetypeScale_ = db->celtscale();
    lineWeight_ = db->celweight();
}

void AcDbEntity::forEachSubentity(const std::function<void(AcDbEntity&)>& apply) {
    if (auto* const owner = dynamic_cast<headless::SubentityOwner*>(this))
        owner->subentities().change<AcDbEntity>(apply);
}

Acad::ErrorStatus AcDbEntity::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    for (const DxfTag& tag : filer->subclass("AcDbEntity"))
        readProperty(*filer, tag);
    if (layerId_.isNull() && filer->database() != nullptr)
        layerId_ = filer->database()->layerZero();
    return Acad::eOk;
}

void AcDbEntity::readProperty(AcDbDxfFiler& filer, const DxfTag& tag) {
    switch (tag.code) {
    case 6:
        linetypeId_ = filer.symbolId(AcDbLinetypeTableRecord::desc(), tag);
        break;
    case 8:
        layerId_ = filer.symbolId(AcDbLayerTableRecord::desc(), tag);
        break;
    case 48:
        linetypeScale_ = tag.real();
        break;
    case 60:
        visibility_ = tag.flag() ? AcDb::kInvisible : AcDb::kVisible;
        break;
    case 62:
        // A true colour, where both stand, is the one that counts.
        if (!color_.isByColor()) readColorIndex(filer, tag);
        break;
    case 347:
        materialId_ = filer.objectId(tag);
        break;
    case 370:
        if (isLineWeight(tag.integer()))
            lineWeight_ = static_cast<AcDb::LineWeight>(tag.integer());
        else
            filer.report(tag, "no such lineweight; taken as by layer");
        break;
    case 420: {
        const auto rgb = static_cast<Adesk::UInt32>(tag.integer());
        color_.setRGB(static_cast<Adesk::UInt8>(rgb >> 16), static_cast<Adesk::UInt8>(rgb >> 8),
                      static_cast<Adesk::UInt8>(rgb));
        break;
    }
    case 430:
        headless::ObjectData::setColorName(*this, filer.text(tag));
        break;
    case 440:
        transparency_.serializeIn(static_cast<Adesk::UInt32>(tag.integer()));
        break;
    default:
        break;
    }
}

void AcDbEntity::readColorIndex(AcDbDxfFiler& filer, const DxfTag& tag) {
    const std::int64_t index = tag.integer();
    const bool known = index >= 0 && index <= 257;
    if (!known || color_.setColorIndex(static_cast<int>(index)) != Acad::eOk)
        filer.report(tag, "no such colour; taken as by layer");
}

Acad::ErrorStatus AcDbEntity::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbObject::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {6, 8, 48, 60, 62, 347, 370, 420, 430, 440};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbEntity", kCodes);
    // Every entity of a file is on a layer; the first one is always there.
    if (layerId_.isNull())
        out.text(8, L"0");
    else
        out.symbol(8, layerId_);
    const AcDbDatabase* const db = filer->database();
    if (db == nullptr || linetypeId_ != db->byLayerLinetype()) out.symbol(6, linetypeId_);
    if (!materialId_.isNull() && out.since(headless::DrawingVersion::k2007))
        out.handle(347, materialId_);
    writeLook(out);
    return Acad::eOk;
}

void AcDbEntity::writeLook(headless::DxfOutput& out) const {
    using headless::DrawingVersion;
    constexpr Adesk::UInt32 kPartsOfColor = 0xFFFFFF;
    out.integer(62, color_.nearestIndex(), AcCmEntityColor::kACIbyLayer);
    if (out.since(DrawingVersion::k2000)) out.integer(370, lineWeight_, AcDb::kLnWtByLayer);
    if (out.since(DrawingVersion::kR13)) out.real(48, linetypeScale_, 1.0);
    out.integer(60, visibility_ == AcDb::kVisible ? 0 : 1, 0);
    if (!out.since(DrawingVersion::k2004)) return;
    if (color_.isByColor()) out.integer(420, color_.color() & kPartsOfColor);
    out.text(430, headless::ObjectData::colorName(*this), L"");
    out.integer(440, transparency_.serializeOut(), 0);
}

void AcDbEntity::forEachReference(const headless::ReferenceVisitor& visit) {
    visit(layerId_, headless::ReferenceKind::kHardPointer);
    visit(linetypeId_, headless::ReferenceKind::kHardPointer);
    visit(materialId_, headless::ReferenceKind::kHardPointer);
}
