#include "db/spatial_filter.h"

#include "db/dictionary.h"
#include "db/dxf_fields.h"
#include "db/dxf_output.h"
#include "db/residence.h"
#include "db/xrecord.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbSpatialFilter, AcDbFilter, "SPATIAL_FILTER")
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbFilter, AcDbObject)

using headless::DxfTag;
using headless::Residence;

namespace {

constexpr std::size_t kMatrixNumbers = 12;

/// The three rows that files have of a matrix.
AcGeMatrix3d matrixOf(const double* numbers) {
    AcGeMatrix3d matrix;
    for (int i = 0; i < 12; ++i)
        matrix(static_cast<unsigned>(i / 4), static_cast<unsigned>(i % 4)) = numbers[i];
    return matrix;
}

void write(headless::DxfOutput& out, const AcGeMatrix3d& matrix) {
    for (unsigned row = 0; row < 3; ++row)
        for (unsigned column = 0; column < 4; ++column)
            out.real(40, matrix(row, column));
}

/// The points of a record that follow a heading, up to the next one.
std::vector<AcGePoint2d> pointsUnder(const headless::DataItems& items, std::wstring_view heading) {
    std::vector<AcGePoint2d> points;
    bool under = false;
    for (const headless::DataItem& item : items) {
        if (item.code == 102) under = item.text() == heading;
        const auto* const point = std::get_if<AcGePoint3d>(&item.value);
        if (under && point != nullptr) points.emplace_back(point->x, point->y);
    }
    return points;
}

} // namespace

Acad::ErrorStatus AcDbFilter::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status == Acad::eOk) filer->output().subclass("AcDbFilter", {});
    return status;
}

/// The boundary as it was drawn when this is the clip of a rest; nothing when it is none, or has
/// another boundary by now.
std::optional<std::vector<AcGePoint2d>> AcDbSpatialFilter::invertedBoundary() const {
    const auto* const extensions = Residence::peek<AcDbDictionary>(extensionDictionary());
    if (extensions == nullptr) return std::nullopt;
    const auto* const record =
        Residence::peek<AcDbXrecord>(extensions->find(L"ACAD_XREC_ROUNDTRIP"));
    if (record == nullptr) return std::nullopt;
    const headless::DataItems items = record->items();
    std::vector<AcGePoint2d> drawn = pointsUnder(items, L"ACAD_INVERTEDCLIP_ROUNDTRIP");
    if (drawn.size() < 2) return std::nullopt;
    if (pointsUnder(items, L"ACAD_INVERTEDCLIP_ROUNDTRIP_COMPARE") != points_) return std::nullopt;
    return drawn;
}

bool AcDbSpatialFilter::isInverted() const {
    assertReadEnabled();
    return invertedBoundary().has_value();
}

Acad::ErrorStatus AcDbSpatialFilter::getDefinition(AcGePoint2dArray& points, AcGeVector3d& normal,
                                                   double& elevation, double& frontClip,
                                                   double& backClip,
                                                   Adesk::Boolean& enabled) const {
    assertReadEnabled();
    points.setLogicalLength(0);
    for (const AcGePoint2d& point : invertedBoundary().value_or(points_))
        points.append(point);
    normal = normal_;
    elevation = origin_.asVector().dotProduct(normal_);
    frontClip = front_.value_or(ACDB_INFINITE_XCLIP_DEPTH);
    backClip = back_.value_or(-ACDB_INFINITE_XCLIP_DEPTH);
    enabled = enabled_;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpatialFilter::setDefinition(const AcGePoint2dArray& points,
                                                   const AcGeVector3d& normal, double elevation,
                                                   double frontClip, double backClip,
                                                   Adesk::Boolean enabled) {
    if (points.length() < 2) return Acad::eInvalidInput;
    assertWriteEnabled();
    points_.assign(points.asArrayPtr(), points.asArrayPtr() + points.length());
    normal_ = headless::readNormal(normal);
    origin_ = AcGePoint3d::kOrigin + normal_ * elevation;
    inverseBlock_ = AcGeMatrix3d::kIdentity;
    AcGeMatrix3d down;
    down.setToTranslation(AcGeVector3d(0, 0, -elevation));
    toClipSpace_ = down * headless::ocsMatrix(normal_).transpose();
    const auto given = [](double depth) {
        return std::abs(depth) < ACDB_INFINITE_XCLIP_DEPTH ? std::optional(depth) : std::nullopt;
    };
    front_ = given(frontClip);
    back_ = given(backClip);
    enabled_ = enabled;
    return Acad::eOk;
}

AcGeMatrix3d& AcDbSpatialFilter::getClipSpaceToWCSMatrix(AcGeMatrix3d& matrix) const {
    return matrix = look(toClipSpace_).inverse();
}

AcGeMatrix3d& AcDbSpatialFilter::getOriginalInverseBlockXform(AcGeMatrix3d& matrix) const {
    return matrix = look(inverseBlock_);
}

Acad::ErrorStatus AcDbSpatialFilter::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    bool hasFront = false;
    std::vector<double> numbers; // of the two matrices
    for (const DxfTag& tag : filer->subclass("AcDbSpatialFilter")) {
        if (tag.code == 72) hasFront = tag.flag();
        if (tag.code != 40)
            readField(*filer, tag);
        else if (hasFront && !front_)
            front_ = tag.real();
        else
            numbers.push_back(tag.real());
    }
    if (numbers.size() >= 2 * kMatrixNumbers) {
        inverseBlock_ = matrixOf(numbers.data());
        toClipSpace_ = matrixOf(numbers.data() + kMatrixNumbers);
    }
    normal_ = headless::readNormal(normal_);
    return Acad::eOk;
}

void AcDbSpatialFilter::readField(AcDbDxfFiler& filer, const DxfTag& tag) {
    switch (tag.code) {
    case 10:
        points_.emplace_back(tag.real(), 0.0);
        break;
    case 20:
        if (!points_.empty()) points_.back().y = tag.real();
        break;
    case 210:
    case 220:
    case 230:
        headless::setCoordinate(normal_, tag);
        break;
    case 11:
    case 21:
    case 31:
        headless::setCoordinate(origin_, tag);
        break;
    case 71:
        enabled_ = tag.flag();
        break;
    case 41:
        back_ = tag.real();
        break;
    case 70:
        if (tag.integer() < 2) filer.report(tag, "a clip boundary of fewer than two points");
        break;
    default:
        break;
    }
}

Acad::ErrorStatus AcDbSpatialFilter::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbFilter::dxfOutFields(filer); status != Acad::eOk) return status;
    headless::DxfOutput& out = filer->output();
    out.wholeSubclass("AcDbSpatialFilter");
    out.integer(70, static_cast<std::int64_t>(points_.size()));
    for (const AcGePoint2d& point : points_)
        out.point(10, point);
    out.point(210, normal_);
    out.point(11, origin_);
    out.integer(71, enabled_ ? 1 : 0);
    out.integer(72, front_ ? 1 : 0);
    if (front_) out.real(40, *front_);
    out.integer(73, back_ ? 1 : 0);
    if (back_) out.real(41, *back_);
    write(out, inverseBlock_);
    write(out, toClipSpace_);
    return Acad::eOk;
}
