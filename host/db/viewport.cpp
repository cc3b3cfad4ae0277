#include "db/viewport.h"

#include <algorithm>
#include <cmath>

#include "db/dxf_fields.h"
#include "db/dxf_output.h"
#include "db/geometry_sink.h"
#include "db/layer_table.h"
#include "db/named_fields.h"
#include "db/residence.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbViewport, AcDbEntity, "VIEWPORT")

using headless::DxfTag;
namespace field = headless::field;

namespace {

constexpr short kSheetNumber = 1;
constexpr std::uint32_t kOff = 0x20000;
constexpr std::uint32_t kClipped = 0x10000; // by another entity
constexpr std::uint32_t kModes = 0x1F;

} // namespace

Acad::ErrorStatus AcDbViewport::setCustomScale(double scale) {
    if (!(scale > 0.0)) return Acad::eInvalidInput;
    return setViewHeight(height() / scale);
}

Acad::ErrorStatus AcDbViewport::freezeLayersInViewport(const AcDbObjectIdArray& layers) {
    const bool known = std::all_of(layers.begin(), layers.end(), [](AcDbObjectId id) {
        return headless::Residence::peek<AcDbLayerTableRecord>(id) != nullptr;
    });
    if (!known) return Acad::eInvalidInput;
    assertWriteEnabled();
    for (const AcDbObjectId layer : layers)
        if (!isLayerFrozenInViewport(layer)) frozenLayers_.push_back(layer);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::thawLayersInViewport(const AcDbObjectIdArray& layers) {
    assertWriteEnabled();
    std::erase_if(frozenLayers_, [&](AcDbObjectId id) { return layers.contains(id); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::thawAllLayersInViewport() {
    return change(frozenLayers_, std::vector<AcDbObjectId>());
}

bool AcDbViewport::isLayerFrozenInViewport(const AcDbObjectId& layer) const {
    const auto& frozen = look(frozenLayers_);
    return std::find(frozen.begin(), frozen.end(), layer) != frozen.end();
}

Acad::ErrorStatus AcDbViewport::getFrozenLayerList(AcDbObjectIdArray& layers) const {
    for (const AcDbObjectId layer : look(frozenLayers_))
        if (!layer.isErased()) layers.append(layer);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    number_ = 0;
    view_.height = 0.0;
    bool hasViewCenter = false;
    const auto others = [&](const DxfTag& tag) {
        hasViewCenter = hasViewCenter || tag.code == 12;
        if (tag.code == 90) readModes(tag.integer());
        const bool frozen = tag.code == 331 || tag.code == 341; // that one in files before 2000
        if (frozen) frozenLayers_.push_back(filer->objectId(tag));
        return frozen;
    };
    field::read(*filer, filer->subclass("AcDbViewport"), others, field::Point{10, centerPoint_},
                field::Point{12, view_.center}, field::Point{16, view_.direction},
                field::Point{17, view_.target}, field::Real{40, width_}, field::Real{41, height_},
                field::Real{42, view_.lensLength}, field::Real{43, view_.frontClip},
                field::Real{44, view_.backClip}, field::Real{45, view_.height},
                field::Angle{51, view_.twist}, field::Integer{69, number_},
                field::Id{340, clipEntity_});
    // Older files tell the view in extended data, if at all: it shows its own part of the sheet.
    if (!hasViewCenter) view_.center.set(centerPoint_.x, centerPoint_.y);
    if (!(view_.height > 0.0)) view_.height = height_;
    headless::makeUsable(view_);
    return Acad::eOk;
}

void AcDbViewport::readModes(std::int64_t flags) {
    on_ = (flags & kOff) == 0;
    clipped_ = (flags & kClipped) != 0;
    view_.mode = static_cast<short>(flags & kModes);
}

Acad::ErrorStatus AcDbViewport::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 40, 41, 69, 12, 22, 16,  26,  36, 17,
                                              27, 37, 42, 43, 44, 45, 51, 90, 331, 340, 341};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbViewport", kCodes);
    out.point(10, centerPoint_);
    out.real(40, width_);
    out.real(41, height_);
    out.integer(68, on_ ? 1 : 0); // where it stands among all is told when it is shown
    out.integer(69, number_ < 0 ? 0 : number_);
    if (!out.since(headless::DrawingVersion::k2000)) return Acad::eOk;
    out.point(12, view_.center);
    out.point(16, view_.direction);
    out.point(17, view_.target);
    out.real(42, view_.lensLength);
    out.real(43, view_.frontClip);
    out.real(44, view_.backClip);
    out.real(45, view_.height);
    out.angle(51, view_.twist);
    const auto mode = static_cast<std::uint32_t>(view_.mode) & kModes;
    out.flags(90, mode | (on_ ? 0 : kOff) | (clipped_ ? kClipped : 0), kModes | kOff | kClipped);
    for (const AcDbObjectId layer : frozenLayers_)
        if (!layer.isErased()) out.handle(331, layer);
    if (!clipEntity_.isNull() && !clipEntity_.isErased()) out.handle(340, clipEntity_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::subTransformBy(const AcGeMatrix3d& transform) {
    const double scale = transform.scale();
    centerPoint_.transformBy(transform);
    width_ *= scale;
    height_ *= scale;
    return Acad::eOk;
}

void AcDbViewport::subDescribe(headless::GeometrySink& sink) const {
    // The sheet's own viewport has no border.
    if (number_ == kSheetNumber) return;
    const AcGeVector3d across(width_ / 2.0, 0.0, 0.0);
    const AcGeVector3d up(0.0, height_ / 2.0, 0.0);
    const AcGePoint3d corners[] = {centerPoint_ - across - up, centerPoint_ + across - up,
                                   centerPoint_ + across + up, centerPoint_ - across + up};
    for (int i = 0; i < 4; ++i)
        sink.segment(corners[i], corners[(i + 1) % 4]);
}

void AcDbViewport::forEachReference(const headless::ReferenceVisitor& visit) {
    AcDbEntity::forEachReference(visit);
    for (AcDbObjectId& layer : frozenLayers_)
        visit(layer, headless::ReferenceKind::kSoftPointer);
    std::erase_if(frozenLayers_, [](AcDbObjectId id) { return id.isNull(); });
    visit(clipEntity_, headless::ReferenceKind::kSoftPointer);
}
