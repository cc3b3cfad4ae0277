#include "view/looks.h"

#include "db/database.h"
#include "db/entity.h"
#include "db/residence.h"
#include "win/casing.h"

namespace headless {
namespace {

AcDbObjectId linetypeOf(const AcDbEntity& entity, AcDbObjectId byLayer, const Traits& outer) {
    const AcDbObjectId own = entity.linetypeId();
    const auto* const record = Residence::peek<AcDbLinetypeTableRecord>(own);
    if (record == nullptr) return byLayer;
    if (record->nameOf().empty()) return {};
    const AcDbDatabase* const db = record->database();
    if (db != nullptr && own == db->byLayerLinetype()) return byLayer;
    return db != nullptr && own == db->byBlockLinetype() ? outer.linetype : own;
}

/// In mm.
double weightOf(AcDb::LineWeight own, AcDb::LineWeight byLayer, const Traits& outer) {
    constexpr double kHundredths = 100.0;
    if (own == AcDb::kLnWtByLayer) own = byLayer;
    if (own == AcDb::kLnWtByBlock) return outer.lineWeight;
    return own < 0 ? Traits::kDefaultWeight : static_cast<int>(own) / kHundredths;
}

Adesk::UInt8 alphaOf(const AcCmTransparency& own, Adesk::UInt8 byLayer, const Traits& outer) {
    if (own.method() == AcCmTransparency::kByBlock) return outer.alpha;
    return own.method() == AcCmTransparency::kByAlpha ? own.alpha() : byLayer;
}

} // namespace

const Looks::LayerLook& Looks::layer(AcDbObjectId id) {
    AcDbStub* const stub = id;
    const auto known = layers_.find(stub);
    if (known != layers_.end()) return known->second;
    LayerLook& look = layers_[stub];
    AcDbLayerTableRecord* record = nullptr;
    if (acdbOpenObject(record, id, AcDb::kForRead) != Acad::eOk) return look;
    look.color = record->color().entityColor();
    look.linetype = record->linetypeObjectId();
    look.lineWeight = record->lineWeight();
    look.alpha = record->transparency().alpha();
    // What dimensions were measured between is on a layer that never comes to paper.
    look.isOff = record->isOff() || compareNoCase(record->nameOf(), L"DEFPOINTS") == 0;
    look.isFrozen = record->isFrozen();
    look.isZero = record->nameOf() == L"0";
    record->close();
    return look;
}

bool Looks::shows(AcDbObjectId id) {
    const LayerLook& look = layer(id);
    return !look.isOff && !look.isFrozen;
}

void Looks::freeze(const AcDbObjectIdArray& layers) {
    frozen_.clear();
    for (const AcDbObjectId id : layers)
        frozen_.insert(id);
}

const LinePattern& Looks::patternOf(AcDbObjectId linetype) {
    AcDbStub* const stub = linetype;
    const auto known = patterns_.find(stub);
    if (known != patterns_.end()) return known->second;
    return patterns_.emplace(stub, linePatternOf(linetype)).first->second;
}

Traits Looks::traitsOf(const AcDbEntity& entity, const Traits& outer) {
    Traits traits;
    traits.layer =
        !outer.layer.isNull() && layer(entity.layerId()).isZero ? outer.layer : entity.layerId();
    const LayerLook& own = layer(traits.layer);
    const AcCmEntityColor color = entity.entityColor();
    traits.color = color.isByLayer() ? own.color : color.isByBlock() ? outer.color : color;
    traits.linetype = linetypeOf(entity, own.linetype, outer);
    traits.linetypeScale = entity.linetypeScale();
    traits.lineWeight = weightOf(entity.lineWeight(), own.lineWeight, outer);
    traits.alpha = alphaOf(entity.transparency(), own.alpha, outer);
    traits.isOff = own.isOff;
    traits.isFrozen = own.isFrozen || frozen_.contains(traits.layer);
    const AcDbDatabase* const db = entity.database();
    traits.isHighlighted =
        outer.isHighlighted || (db != nullptr && db->highlights().contains(entity.objectId()));
    return traits;
}

PictureColor colorOnSheet(const Traits& traits, const PictureColor& foreground) {
    const AcCmEntityColor& color = traits.color;
    if (color.isByColor()) return {color.red(), color.green(), color.blue(), traits.alpha};
    const Adesk::UInt16 index = color.colorIndex();
    if (color.isForeground() || color.isByBlock() || index == 0 || index == 7 || index > 255)
        return {foreground.red, foreground.green, foreground.blue, traits.alpha};
    constexpr Adesk::UInt32 kByte = 0xFF;
    const Adesk::UInt32 rgb = AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(index));
    return {static_cast<std::uint8_t>(rgb >> 16 & kByte),
            static_cast<std::uint8_t>(rgb >> 8 & kByte), static_cast<std::uint8_t>(rgb & kByte),
            traits.alpha};
}

PictureColor inkOnSheet(const Traits& traits, const PictureColor& foreground) {
    const PictureColor color = colorOnSheet(traits, foreground);
    const auto isPaper = [](std::uint8_t share, std::uint8_t opposite) {
        return share == 0xFF - opposite;
    };
    if (!isPaper(color.red, foreground.red) || !isPaper(color.green, foreground.green) ||
        !isPaper(color.blue, foreground.blue))
        return color;
    return {foreground.red, foreground.green, foreground.blue, color.alpha};
}

} // namespace headless
