#include "view/traits.h"

#include "db/database.h"
#include "db/entity.h"
#include "db/object_pointer.h"
#include "db/open.h"
#include "db/residence.h"

namespace headless {
namespace {

/// What a layer says; the defaults for a layer that is not there.
struct LayerLook {
    AcCmEntityColor color{AcCmEntityColor::kForeground};
    AcDbObjectId linetype;
    AcDb::LineWeight lineWeight = AcDb::kLnWtByLwDefault;
    Adesk::UInt8 alpha = 255;
    bool isOff = false;
    bool isFrozen = false;
};

LayerLook lookOf(AcDbObjectId layer) {
    AcDbLayerTableRecord* record = nullptr;
    if (acdbOpenObject(record, layer, AcDb::kForRead) != Acad::eOk) return {};
    LayerLook look{record->color(),      record->linetypeObjectId(),
                   record->lineWeight(), record->transparency().alpha(),
                   record->isOff(),      record->isFrozen()};
    record->close();
    return look;
}

bool isLayerZero(AcDbObjectId layer) {
    const auto* const record = Residence::peek<AcDbLayerTableRecord>(layer);
    return record == nullptr || record->nameOf() == L"0";
}

AcCmEntityColor colorOf(const AcCmEntityColor& own, const LayerLook& layer, const Traits& outer) {
    if (own.isByLayer()) return layer.color;
    return own.isByBlock() ? outer.color : own;
}

AcDbObjectId linetypeOf(const AcDbEntity& entity, const LayerLook& layer, const Traits& outer) {
    const AcDbObjectId own = entity.linetypeId();
    const auto* const record = Residence::peek<AcDbLinetypeTableRecord>(own);
    if (record == nullptr) return layer.linetype;
    if (record->nameOf().empty()) return {};
    const AcDbDatabase* const db = record->database();
    if (db != nullptr && own == db->byLayerLinetype()) return layer.linetype;
    return db != nullptr && own == db->byBlockLinetype() ? outer.linetype : own;
}

/// In mm.
double weightOf(AcDb::LineWeight own, const LayerLook& layer, const Traits& outer) {
    constexpr double kHundredths = 100.0;
    if (own == AcDb::kLnWtByLayer) own = layer.lineWeight;
    if (own == AcDb::kLnWtByBlock) return outer.lineWeight;
    return own < 0 ? Traits::kDefaultWeight : static_cast<int>(own) / kHundredths;
}

Adesk::UInt8 alphaOf(const AcCmTransparency& own, const LayerLook& layer, const Traits& outer) {
    if (own.method() == AcCmTransparency::kByBlock) return outer.alpha;
    return own.method() == AcCmTransparency::kByAlpha ? own.alpha() : layer.alpha;
}

} // namespace

Traits traitsOf(const AcDbEntity& entity, const Traits& outer) {
    Traits traits;
    traits.layer =
        !outer.layer.isNull() && isLayerZero(entity.layerId()) ? outer.layer : entity.layerId();
    const LayerLook layer = lookOf(traits.layer);
    traits.color = colorOf(entity.entityColor(), layer, outer);
    traits.linetype = linetypeOf(entity, layer, outer);
    traits.linetypeScale = entity.linetypeScale();
    traits.lineWeight = weightOf(entity.lineWeight(), layer, outer);
    traits.alpha = alphaOf(entity.transparency(), layer, outer);
    traits.isOff = layer.isOff;
    traits.isFrozen = layer.isFrozen;
    const AcDbDatabase* const db = entity.database();
    traits.isHighlighted =
        outer.isHighlighted || (db != nullptr && db->highlights().contains(entity.objectId()));
    return traits;
}

PictureColor paperColor(const Traits& traits) {
    const AcCmEntityColor& color = traits.color;
    if (color.isByColor()) return {color.red(), color.green(), color.blue(), traits.alpha};
    const Adesk::UInt16 index = color.colorIndex();
    if (color.isForeground() || color.isByBlock() || index == 0 || index > 255)
        return {0, 0, 0, traits.alpha};
    constexpr Adesk::UInt32 kByte = 0xFF;
    const Adesk::UInt32 rgb = AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(index));
    return {static_cast<std::uint8_t>(rgb >> 16 & kByte),
            static_cast<std::uint8_t>(rgb >> 8 & kByte), static_cast<std::uint8_t>(rgb & kByte),
            traits.alpha};
}

} // namespace headless
