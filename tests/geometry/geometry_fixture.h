// The base of the geometry tests: polylines in a drawing, and points that compare.
#pragma once

#include <initializer_list>
#include <vector>

#include <gmock/gmock.h>

#include <afxtempl.h>
#include <dbents.h>
#include <dbpl.h>

#include "frame/object_handle.h"
#include "support/session_fixture.h"

namespace test_support {

inline std::vector<double> listed(const CArray<double, double>& array) {
    std::vector<double> values;
    for (INT_PTR i = 0; i < array.GetSize(); ++i)
        values.push_back(array[i]);
    return values;
}

inline AcGePoint3dArray pointArray(std::initializer_list<AcGePoint3d> points) {
    AcGePoint3dArray array;
    for (const AcGePoint3d& p : points)
        array.append(p);
    return array;
}

inline void expectPoints(const AcGePoint3dArray& actual, const std::vector<AcGePoint3d>& expected,
                         double tolerance = 1e-9) {
    ASSERT_EQ(actual.length(), static_cast<int>(expected.size()));
    for (int i = 0; i < actual.length(); ++i) {
        const AcGePoint3d& wanted = expected[static_cast<std::size_t>(i)];
        EXPECT_LE(actual[i].distanceTo(wanted), tolerance)
            << "point " << i << " is " << actual[i].x << ", " << actual[i].y << ", " << actual[i].z;
    }
}

/// A polyline in no drawing.
inline std::unique_ptr<AcDbPolyline> loosePolyline(const std::vector<BulgeVertex>& vertices,
                                                   bool closed = true) {
    auto polyline = std::make_unique<AcDbPolyline>(static_cast<unsigned>(vertices.size()));
    for (unsigned i = 0; i < vertices.size(); ++i)
        polyline->addVertexAt(i, vertices[i].point, vertices[i].bulge);
    polyline->setClosed(closed);
    return polyline;
}

} // namespace test_support

using test_support::BulgeVertex;
using test_support::expectPoints;
using test_support::listed;
using test_support::loosePolyline;
using test_support::pointArray;

class GeometryTest : public test_support::SessionTest {
protected:
    AcDbObjectId addCircle(const AcGePoint3d& center, double radius, const ACHAR* layer = L"0") {
        auto circle = std::make_unique<AcDbCircle>(center, AcGeVector3d::kZAxis, radius);
        circle->setDatabaseDefaults(database());
        EXPECT_EQ(circle->setLayer(addLayer(layer)), Acad::eOk);
        return add(std::move(circle));
    }
    AcDbObjectId addLine(const AcGePoint3d& start, const AcGePoint3d& end) {
        auto line = std::make_unique<AcDbLine>(start, end);
        line->setDatabaseDefaults(database());
        return add(std::move(line));
    }
};
