#include "db/raster_image.h"

#include <algorithm>

#include "db/dxf_fields.h"
#include "db/dxf_output.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbRasterImage, AcDbEntity, "IMAGE")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbWipeout, AcDbRasterImage, "WIPEOUT")

using headless::DxfTag;
namespace field = headless::field;

void AcDbRasterImage::getOrientation(AcGePoint3d& origin, AcGeVector3d& u, AcGeVector3d& v) const {
    origin = look(origin_);
    u = u_ * size_.x;
    v = v_ * size_.y;
}

Acad::ErrorStatus AcDbRasterImage::setOrientation(const AcGePoint3d& origin, const AcGeVector3d& u,
                                                  const AcGeVector3d& v) {
    const bool spans = !u.crossProduct(v).isZeroLength();
    if (!spans || !(size_.x > 0.0) || !(size_.y > 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    origin_ = origin;
    u_ = u / size_.x;
    v_ = v / size_.y;
    return Acad::eOk;
}

AcGePoint3d AcDbRasterImage::placeOf(const AcGePoint2d& pixel) const {
    // Pixels count from the upper left corner, and their middles are at whole numbers.
    return origin_ + u_ * (pixel.x + 0.5) + v_ * (size_.y - pixel.y - 0.5);
}

std::vector<AcGePoint3d> AcDbRasterImage::outline() const {
    std::vector<AcGePoint2d> pixels = boundary_;
    if (!clipped_ || inverted_ || pixels.size() < 2)
        pixels = {{-0.5, -0.5}, {size_.x - 0.5, size_.y - 0.5}};
    if (pixels.size() == 2) {
        const AcGePoint2d first = pixels[0];
        const AcGePoint2d last = pixels[1];
        pixels = {first, {last.x, first.y}, last, {first.x, last.y}};
    }
    std::vector<AcGePoint3d> points;
    for (const AcGePoint2d& pixel : pixels)
        points.push_back(placeOf(pixel));
    return points;
}

Acad::ErrorStatus AcDbRasterImage::subTransformBy(const AcGeMatrix3d& transform) {
    origin_.transformBy(transform);
    u_.transformBy(transform);
    v_.transformBy(transform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRasterImage::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const AcGePoint3d& point : outline())
        points.append(point);
    return Acad::eOk;
}

void AcDbRasterImage::subDescribe(headless::GeometrySink& sink) const {
    const std::vector<AcGePoint3d> corners = outline();
    for (std::size_t i = 0; i < corners.size(); ++i)
        sink.segment(corners[i], corners[(i + 1) % corners.size()]);
}

Acad::ErrorStatus AcDbRasterImage::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    const auto others = [this](const DxfTag& tag) { return readField(tag); };
    field::read(*filer, filer->subclass(marker()), field::Point{10, origin_}, field::Point{11, u_},
                field::Point{12, v_}, field::Point{13, size_}, field::Points{14, boundary_}, others,
                field::Integer{70, display_}, field::Flag{280, clipped_},
                field::Flag{290, inverted_}, field::Id{340, definition_});
    return Acad::eOk;
}

/// Groups with a range of their own.
bool AcDbRasterImage::readField(const DxfTag& tag) {
    const auto percent = [&tag] {
        return static_cast<Adesk::Int8>(std::clamp<std::int64_t>(tag.integer(), 0, 100));
    };
    if (tag.code == 71) boundaryType_ = tag.integer() == kPoly ? kPoly : kRect;
    if (tag.code == 281) brightness_ = percent();
    if (tag.code == 282) contrast_ = percent();
    if (tag.code == 283) fade_ = percent();
    return false;
}

Acad::ErrorStatus AcDbRasterImage::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 11, 21, 31,  12,  22,  32,  13,  23,
                                              14, 24, 70, 71, 91, 280, 281, 282, 283, 290, 340};
    constexpr std::int64_t kClassVersion = 0;
    headless::DxfOutput& out = filer->output();
    out.subclass(marker(), kCodes);
    out.integer(90, kClassVersion);
    out.point(10, origin_);
    out.point(11, u_);
    out.point(12, v_);
    out.point(13, AcGePoint2d(size_.x, size_.y));
    out.handle(340, definition_);
    out.integer(70, display_);
    out.integer(280, clipped_ ? 1 : 0);
    out.integer(281, brightness_);
    out.integer(282, contrast_);
    out.integer(283, fade_);
    writeBoundary(out);
    return Acad::eOk;
}

void AcDbRasterImage::writeBoundary(headless::DxfOutput& out) const {
    out.integer(71, boundaryType_);
    out.integer(91, std::ssize(boundary_));
    for (const AcGePoint2d& point : boundary_)
        out.point(14, point);
    if (out.since(headless::DrawingVersion::k2010)) out.integer(290, inverted_ ? 1 : 0);
}

void AcDbRasterImage::forEachReference(const headless::ReferenceVisitor& visit) {
    AcDbEntity::forEachReference(visit);
    visit(definition_, headless::ReferenceKind::kHardPointer);
}
