// Lightweight polylines from their records and back.
#include <algorithm>

#include "db/dxf_output.h"
#include "db/named_fields.h"
#include "db/polyline.h"

namespace field = headless::field;

Acad::ErrorStatus AcDbPolyline::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbCurve::dxfInFields(filer); status != Acad::eOk) return status;
    const auto tags = filer->subclass("AcDbPolyline");
    const auto vertices = [this, most = static_cast<std::int64_t>(tags.size() / 2)](
                              const headless::DxfTag& tag) {
        if (tag.code != 90) return readVertexGroup(tag);
        // The count may lie: no more vertices can come than there are pairs of groups.
        points_.reserve(static_cast<std::size_t>(std::clamp<std::int64_t>(tag.integer(), 0, most)));
        return true;
    };
    field::read(*filer, tags, vertices, field::Real{38, elevation_}, field::Real{39, thickness_},
                field::Real{43, constantWidth_}, field::Bit{70, 1, closed_},
                field::Bit{70, 128, plinegen_}, field::Normal{normal_});
    completeLists();
    return Acad::eOk;
}

bool AcDbPolyline::readVertexGroup(const headless::DxfTag& tag) {
    if (tag.code == 10) {
        points_.emplace_back(tag.real(), 0.0);
        return true;
    }
    const bool ofVertex = tag.code == 20 || (tag.code >= 40 && tag.code <= 42) || tag.code == 91;
    if (!ofVertex) return false;
    if (points_.empty()) return true; // Belongs to no vertex.
    const std::size_t count = points_.size();
    const std::size_t last = count - 1;
    if (tag.code == 20) {
        points_[last].y = tag.real();
    } else if (tag.code == 91) {
        if (tag.integer() == 0 && identifiers_.empty()) return true;
        identifiers_.resize(count);
        identifiers_[last] = static_cast<Adesk::Int32>(tag.integer());
    } else if (const double value = tag.real(); tag.code == 42) {
        if (value == 0.0 && bulges_.empty()) return true;
        if (bulges_.empty()) bulges_.reserve(points_.capacity());
        bulges_.resize(count);
        bulges_[last] = value;
    } else {
        if (value == 0.0 && widths_.empty()) return true;
        widths_.resize(count);
        (tag.code == 40 ? widths_[last].start : widths_[last].end) = value;
    }
    return true;
}

void AcDbPolyline::completeLists() {
    // Lists end at the last vertex that had a value of its own.
    if (!bulges_.empty()) bulges_.resize(points_.size());
    if (!identifiers_.empty()) identifiers_.resize(points_.size());
    if (!widths_.empty()) widths_.resize(points_.size());
    const bool vary = std::any_of(widths_.begin(), widths_.end(), [&](const Widths& w) {
        return w.start != widths_.front().start || w.end != widths_.front().start;
    });
    if (!widths_.empty() && !vary) setConstantWidth(widths_.front().start);
}

Acad::ErrorStatus AcDbPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbCurve::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 38, 39, 40,  41,  42,
                                              43, 70, 90, 91, 210, 220, 230};
    constexpr std::uint32_t kClosed = 1;
    constexpr std::uint32_t kPlinegen = 128;
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbPolyline", kCodes);
    out.integer(90, std::ssize(points_));
    out.flags(70, (closed_ ? kClosed : 0) | (plinegen_ ? kPlinegen : 0), kClosed | kPlinegen);
    if (widths_.empty()) out.real(43, constantWidth_);
    out.real(38, elevation_, 0.0);
    out.real(39, thickness_, 0.0);
    for (std::size_t i = 0; i < points_.size(); ++i)
        writeVertex(out, i);
    out.normal(normal_);
    return Acad::eOk;
}

void AcDbPolyline::writeVertex(headless::DxfOutput& out, std::size_t index) const {
    out.point(10, points_[index]);
    if (!identifiers_.empty() && out.since(headless::DrawingVersion::k2010))
        out.integer(91, identifiers_[index]);
    if (!widths_.empty()) {
        out.real(40, widths_[index].start);
        out.real(41, widths_[index].end);
    }
    if (!bulges_.empty()) out.real(42, bulges_[index], 0.0);
}
