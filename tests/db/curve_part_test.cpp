// Curves cut at parameters: every part must run along the curve it comes from.
#include <numbers>

#include "db/arc.h"
#include "db/circle.h"
#include "db/curve.h"
#include "db/ellipse.h"
#include "db/line.h"
#include "db/polyline.h"
#include "db/polyline_2d.h"
#include "db/polyline_3d.h"
#include "db/ray.h"
#include "db/spline.h"
#include "db/xline.h"
#include "entity_support.h"

namespace {

using std::numbers::pi;

using Curves = std::vector<std::unique_ptr<AcDbCurve>>;

Acad::ErrorStatus split(const AcDbCurve& curve, std::initializer_list<double> params,
                        Curves& parts) {
    AcGeDoubleArray array;
    for (const double param : params)
        array.append(param);
    AcDbVoidPtrArray made;
    const Acad::ErrorStatus status = curve.getSplitCurves(array, made);
    for (int i = 0; i < made.length(); ++i)
        parts.emplace_back(static_cast<AcDbCurve*>(made[i]));
    return status;
}

double lengthOf(const AcDbCurve& curve) {
    double end = 0.0, length = -1.0;
    curve.getEndParam(end);
    curve.getDistAtParam(end, length);
    return length;
}

AcGePoint3d at(const AcDbCurve& curve, double length) {
    AcGePoint3d point;
    EXPECT_EQ(curve.getPointAtDist(length, point), Acad::eOk);
    return point;
}

/// Walks along the parts and beside it along the curve, from a length on and around its end.
void expectAlong(const AcDbCurve& curve, const Curves& parts, double begin) {
    const double whole = lengthOf(curve);
    double done = begin;
    for (const auto& part : parts) {
        const double length = lengthOf(*part);
        EXPECT_GT(length, 0.0);
        for (const double share : {0.001, 0.25, 0.5, 0.999}) {
            double along = done + share * length;
            if (along > whole) along -= whole;
            const AcGePoint3d expected = at(curve, along);
            EXPECT_LT(at(*part, share * length).distanceTo(expected), 1e-6) << along;
        }
        done += length;
    }
    EXPECT_NEAR(done - begin, whole, 1e-6);
}

/// Straight and curved, in a slanted plane.
void fillOutline(AcDbPolyline& polyline, bool closed) {
    polyline.addVertexAt(0, {0, 0}, 0.5, 1, 3);
    polyline.addVertexAt(1, {10, 0}, 0.0);
    polyline.addVertexAt(2, {10, 10}, -0.3);
    polyline.addVertexAt(3, {0, 10}, 1.2);
    polyline.setClosed(closed);
    polyline.setNormal(AcGeVector3d(0.1, -0.2, 0.9));
    polyline.setElevation(7);
}

AcGePoint3dArray zigzag() {
    return enttest::points({{0, 0, 0}, {10, 0, 5}, {10, 9, 0}, {3, 12, 1}, {-4, 2, 8}});
}

TEST(CurveParts, RunAlongTheCurve) {
    AcGeDoubleArray bulges;
    AcGePoint3dArray corners;
    for (const double bulge : {0.4, 0.0, -1.5, 0.0}) {
        corners.append(AcGePoint3d(bulges.length() % 3 * 10.0, bulges.length() / 2 * 8.0, 0));
        bulges.append(bulge);
    }
    AcGePoint3dArray path = zigzag();
    AcDb2dPolyline old(AcDb::k2dSimplePoly, corners, 4.0, false, 0.0, 0.0, &bulges);
    old.setNormal(-AcGeVector3d::kZAxis);
    const AcDbLine line(AcGePoint3d(1, 2, 3), AcGePoint3d(7, 2, 11));
    const AcDbArc arc(AcGePoint3d(1, 1, 1), AcGeVector3d(1, 0, 1), 5, 5.0, 1.5);
    const AcDbEllipse ellipse(AcGePoint3d(), AcGeVector3d::kZAxis, AcGeVector3d(8, 1, 0), 0.4, 0.5,
                              5.5);
    AcDbPolyline open;
    fillOutline(open, false);
    const AcDb3dPolyline spatial(AcDb::k3dSimplePoly, path, false);
    const AcDbSpline spline(path);
    struct Case {
        const char* name;
        const AcDbCurve& curve;
        double first, second; // where to cut, shares of the range
    };
    for (const Case& c :
         {Case{"line", line, 0.3, 0.7}, Case{"arc over 0", arc, 0.2, 0.9},
          Case{"ellipse", ellipse, 0.1, 0.8}, Case{"polyline", open, 0.1, 0.9},
          Case{"at a vertex", open, 1.0 / 3, 0.5}, Case{"old polyline", old, 0.1, 0.75},
          Case{"spatial polyline", spatial, 0.4, 0.5}, Case{"spline", spline, 0.2, 0.95}}) {
        SCOPED_TRACE(c.name);
        double start = 0.0, end = 0.0;
        c.curve.getStartParam(start);
        c.curve.getEndParam(end);
        Curves parts;
        ASSERT_EQ(split(c.curve,
                        {start + (end - start) * c.second, start, start + (end - start) * c.first},
                        parts),
                  Acad::eOk);
        ASSERT_EQ(parts.size(), 3U);
        expectAlong(c.curve, parts, 0.0);
    }
}

TEST(CurveParts, OfClosedCurvesGoAcrossTheStart) {
    const AcDbCircle circle(AcGePoint3d(1, 2, 3), AcGeVector3d(0, 1, 1), 4);
    AcDbPolyline closed;
    fillOutline(closed, true);
    const AcDbEllipse ellipse(AcGePoint3d(), AcGeVector3d::kZAxis, AcGeVector3d(8, 1, 0), 0.4);
    for (const AcDbCurve* curve :
         {static_cast<const AcDbCurve*>(&circle), static_cast<const AcDbCurve*>(&closed),
          static_cast<const AcDbCurve*>(&ellipse)}) {
        SCOPED_TRACE(curve->isA()->name());
        double start = 0.0;
        curve->getDistAtParam(0.7, start);
        Curves parts;
        ASSERT_EQ(split(*curve, {2.5, 0.7}, parts), Acad::eOk);
        ASSERT_EQ(parts.size(), 2U);
        expectAlong(*curve, parts, start);

        Curves opened;
        if (curve == &circle) {
            EXPECT_EQ(split(circle, {0.7}, opened), Acad::eInvalidInput);
            continue;
        }
        ASSERT_EQ(split(*curve, {0.7}, opened), Acad::eOk);
        ASSERT_EQ(opened.size(), 1U);
        expectAlong(*curve, opened, start);
    }
}

TEST(CurveParts, OfEndlessLinesAreRaysAndLines) {
    AcDbXline line;
    line.setBasePoint(AcGePoint3d(1, 0, 0));
    line.setUnitDir(AcGeVector3d::kYAxis);
    Curves parts;
    ASSERT_EQ(split(line, {3, -2}, parts), Acad::eOk);
    ASSERT_EQ(parts.size(), 3U);
    const auto* const before = AcDbRay::cast(parts[0].get());
    const auto* const between = AcDbLine::cast(parts[1].get());
    const auto* const after = AcDbRay::cast(parts[2].get());
    ASSERT_TRUE(before != nullptr && between != nullptr && after != nullptr);
    EXPECT_EQ(before->basePoint(), AcGePoint3d(1, -2, 0));
    EXPECT_EQ(before->unitDir(), -AcGeVector3d::kYAxis);
    EXPECT_EQ(between->endPoint(), AcGePoint3d(1, 3, 0));
    EXPECT_EQ(after->unitDir(), AcGeVector3d::kYAxis);
}

TEST(CurveParts, KeepPropertiesAndWidths) {
    AcDbPolyline polyline;
    fillOutline(polyline, false);
    polyline.setColorIndex(3);
    Curves parts;
    ASSERT_EQ(split(polyline, {0.25}, parts), Acad::eOk);
    const auto* const rest = AcDbPolyline::cast(parts[1].get());
    EXPECT_EQ(rest->colorIndex(), 3);
    double first = 0.0, last = 0.0;
    rest->getWidthsAt(0, first, last);
    EXPECT_NEAR(first, 1.5, 1e-12); // a quarter of the way from 1 to 3
    EXPECT_NEAR(last, 3.0, 1e-12);
    EXPECT_EQ(rest->numVerts(), 4U);
}

TEST(CurveParts, NeedAParameterToCutAt) {
    const AcDbLine line(AcGePoint3d(), AcGePoint3d(10, 0, 0));
    Curves parts;
    EXPECT_EQ(split(line, {}, parts), Acad::eInvalidInput);
    EXPECT_EQ(split(line, {0, 10}, parts), Acad::eInvalidInput);
    EXPECT_EQ(split(line, {5, 11}, parts), Acad::eInvalidInput);
    EXPECT_EQ(split(line, {std::nan("")}, parts), Acad::eInvalidInput);
    EXPECT_TRUE(parts.empty());
}

} // namespace
