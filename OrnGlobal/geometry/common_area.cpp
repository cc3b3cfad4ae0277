#include "geometry/common_area.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include <dbents.h>
#include <dbpl.h>
#include <dbsymtb.h>

#include "OrnCore/zel_dwg.h"
#include "OrnCore/zel_math.h"
#include "frame/object_handle.h"
#include "frame/working_database.h"
#include "geometry/line_tools.h"
#include "text/string_list.h"

namespace {

constexpr double kSquareMillimetres = 1e6; // in a square metre
constexpr double kUnbounded = 2147483647.0;
constexpr double kTolerance = 1e-6;

struct Bounds {
    double min;
    double max;

    [[nodiscard]] bool isOpen() const { return min == 0.0 && max == kUnbounded; }
    [[nodiscard]] bool pass(double side) const {
        return CZelMath::EqualLess(side, min, kTolerance) == 0 && CZelMath::More(side, max) == 0;
    }
};

bool sidesPass(const AcDbPolyline& polyline, const Bounds& a, const Bounds& b) {
    constexpr double kShortest = 1.0;
    const AcGePoint3dArray corners = LineTools::GetPlineOutTangant(&polyline);
    if (corners.length() < 4) return false;
    const double sideA = CZelDwg::GetLength(corners[0], corners[1]);
    const double sideB = CZelDwg::GetLength(corners[1], corners[2]);
    if (sideA < kShortest || sideB < kShortest) return false;
    return a.pass(sideA) && b.pass(sideB);
}

bool endsWhereItStarts(const AcDbPolyline& polyline) {
    if (polyline.isClosed()) return true;
    if (polyline.numVerts() == 0) return false;
    AcGePoint3d first;
    AcGePoint3d last;
    polyline.getPointAt(0, first);
    polyline.getPointAt(polyline.numVerts() - 1, last);
    return CZelDwg::EqualPoint(first, last, 3);
}

double squareMetres(const AcDbPolyline& polyline) {
    double area = 0.0;
    if (polyline.getArea(area) != Acad::eOk) area = 0.0;
    area /= kSquareMillimetres;
    if (CZelMath::EqualTo(area, 0.0, kTolerance) == 0) return area;
    return CZelDwg::GetPolylineArea(&polyline) / kSquareMillimetres;
}

CString upperLayerOf(const AcDbEntity& entity) {
    ACHAR* name = entity.layer();
    CString layer(name);
    acutDelString(name);
    return layer.MakeUpper();
}

/// What the outlines on chosen layers add up to; polylines and circles apart.
struct Sum {
    double polylines = 0.0; // square metres
    double circles = 0.0;   // square drawing units
};

Sum sumOnLayers(const AcDbObjectIdArray& ids, const CString& layers, const Bounds& b,
                const Bounds& a) {
    Sum sum;
    const std::vector<CString> names = kelmor::splitLongString(layers, L",", 0, 0);
    for (int i = 0; i < ids.length(); ++i) {
        const ReadHandle<AcDbEntity> entity(ids[i]);
        if (!entity) continue;
        const auto* circle = AcDbCircle::cast(entity.get());
        if (circle == nullptr && AcDbPolyline::cast(entity.get()) == nullptr) continue;
        if (std::ranges::find(names, upperLayerOf(*entity)) == names.end()) continue;
        if (circle == nullptr) {
            sum.polylines += Common::GetPlineArea(ids[i], b.min, b.max, a.min, a.max);
        } else if (double area = 0.0; circle->getArea(area) == Acad::eOk) {
            sum.circles += area;
        }
    }
    return sum;
}

double unitLength(const CString& unit) {
    if (unit.Find(L"毫米") >= 0) return 1.0;
    if (unit.Find(L"厘米") >= 0) return 10.0;
    if (unit.Find(L"分米") >= 0) return 100.0;
    return 1000.0;
}

int roundedHalfUp(double value) {
    constexpr double kLeast = std::numeric_limits<int>::min();
    constexpr double kMost = std::numeric_limits<int>::max();
    const double raised = value + 0.5;
    return std::isnan(raised) ? 0 : static_cast<int>(std::clamp(raised, kLeast, kMost));
}

} // namespace

double Common::GetPlineArea(const AcDbObjectId& id, double minB, double maxB, double minA,
                            double maxA) {
    const ReadHandle<AcDbPolyline> polyline(id);
    if (!polyline) return 0.0;
    const Bounds a{minA, maxA};
    const Bounds b{minB, maxB};
    const bool bounded = !a.isOpen() || !b.isOpen();
    if (bounded && !sidesPass(*polyline, a, b)) return 0.0;
    return endsWhereItStarts(*polyline) ? squareMetres(*polyline) : 0.0;
}

double Common::GetAllPlineArea(const AcDbObjectIdArray& ids, const CString& layers, double minB,
                               double maxB) {
    // The two kinds are added in their different units: callers rely on it.
    const Sum sum = sumOnLayers(ids, layers, {minB, maxB}, {0.0, kUnbounded});
    return sum.polylines + sum.circles;
}

double Common::GetAllPlineArea(const AcDbObjectIdArray& ids, const CString& layers,
                               const CString& unit, double minB, double maxB, double minA,
                               double maxA) {
    const Sum sum = sumOnLayers(ids, layers, {minB, maxB}, {minA, maxA});
    if (unit == L"毫米（mm）") return sum.polylines * kSquareMillimetres + sum.circles;
    return sum.polylines + sum.circles / kSquareMillimetres;
}

CString Common::GetDecimalText(double value, CString precision, CString unit) {
    const double inUnit = value / unitLength(unit);
    CString text;
    if (precision == L"0") {
        text.Format(L"%d", roundedHalfUp(inUnit));
        return text;
    }
    CString format;
    format.Format(L"%%.%df", std::max(precision.GetLength() - 2, 0));
    text.Format(format, inUnit);
    return text;
}

double Common::CalculateCoefficientOgVaration(const std::vector<double>& values) {
    const auto count = static_cast<double>(values.size());
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
    if (mean == 0.0) return 0.0;
    double squares = 0.0;
    for (const double value : values)
        squares += (value - mean) * (value - mean);
    return std::sqrt(squares / count) / mean * 100.0;
}

int Common::GetCurLayerColorIndex() {
    constexpr int kByLayer = 256;
    const AcDbDatabase* db = frame::orWorking(nullptr);
    if (db == nullptr) return kByLayer;
    const ReadHandle<AcDbLayerTableRecord> layer(db->clayer());
    return layer ? static_cast<int>(layer->color().colorIndex()) : kByLayer;
}
