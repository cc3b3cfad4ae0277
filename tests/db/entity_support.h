// What the tests of entities share: reading one from groups, and boxes to compare.
#pragma once

#include <functional>
#include <memory>
#include <ostream>

#include "core_support.h"
#include "db/curve.h"
#include "db/geometry_sink.h"

namespace enttest {

using coretest::Groups;

/// A resident-to-be entity read from groups as a drawing's reader would.
template <class T>
std::unique_ptr<T> read(AcDbDatabase& db, const Groups& groups) {
    auto entity = std::make_unique<T>();
    coretest::GroupFiler filer(db);
    filer.give(groups);
    EXPECT_EQ(entity->dxfInFields(&filer), Acad::eOk);
    return entity;
}

inline AcGePoint3dArray points(const std::vector<AcGePoint3d>& list) {
    AcGePoint3dArray array;
    for (const AcGePoint3d& point : list)
        array.append(point);
    return array;
}

/// A box as the six numbers of its corners.
struct Box {
    AcGePoint3d min, max;
};

inline Box boxOf(const AcDbEntity& entity) {
    AcDbExtents box;
    EXPECT_EQ(entity.getGeomExtents(box), Acad::eOk);
    return {box.minPoint(), box.maxPoint()};
}

inline Box boxUnder(const AcDbEntity& entity, const AcGeMatrix3d& transform) {
    AcDbExtents box;
    EXPECT_EQ(headless::extentsUnder(entity, transform, box), Acad::eOk);
    return {box.minPoint(), box.maxPoint()};
}

inline void expectNear(const AcGePoint3d& actual, const AcGePoint3d& wanted, double tolerance) {
    EXPECT_NEAR(actual.x, wanted.x, tolerance);
    EXPECT_NEAR(actual.y, wanted.y, tolerance);
    EXPECT_NEAR(actual.z, wanted.z, tolerance);
}

inline void expectNear(const Box& actual, const Box& wanted, double tolerance = 1e-9) {
    expectNear(actual.min, wanted.min, tolerance);
    expectNear(actual.max, wanted.max, tolerance);
}

/// A curve measured by chords between many of its points, another road to the same numbers. The
/// count is a multiple of the samples' numbers of segments, so that all joints are among them.
struct Chords {
    double length = 0.0, area = 0.0;
    AcDbExtents box;
};

inline Chords chordsOf(const AcDbCurve& curve, int count = 24000) {
    double first = 0.0, last = 0.0;
    EXPECT_EQ(curve.getStartParam(first), Acad::eOk);
    EXPECT_EQ(curve.getEndParam(last), Acad::eOk);
    Chords chords;
    AcGePoint3d start, previous;
    AcGeVector3d area;
    for (int i = 0; i <= count; ++i) {
        AcGePoint3d point;
        EXPECT_EQ(curve.getPointAtParam(first + (last - first) * i / count, point), Acad::eOk);
        if (i == 0) start = previous = point;
        chords.length += point.distanceTo(previous);
        area += (previous - start).crossProduct(point - start) / 2.0;
        chords.box.addPoint(point);
        previous = point;
    }
    chords.area = area.length();
    return chords;
}

} // namespace enttest
