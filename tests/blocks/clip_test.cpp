// What clips show: points, and what they leave of curves and texts.
#include <cmath>
#include <numbers>

#include <gmock/gmock.h>

#include <dbelipse.h>
#include <dbents.h>
#include <dbpl.h>
#include <dbray.h>
#include <dbsolid.h>
#include <dbspline.h>
#include <dbxline.h>

#include "blocks/block_ref_exploder.h"
#include "blocks_fixture.h"
#include "clipped_reference.h"

namespace {

using std::numbers::pi;

/// A block holding one entity, and what a clipped reference at the origin shows of it.
class ClippedEntities : public ClippedReferences {
protected:
    std::vector<std::unique_ptr<AcDbEntity>> shown(std::unique_ptr<AcDbEntity> entity,
                                                   const Clip& clip) {
        const std::wstring name = L"B" + std::to_wstring(++count_);
        AcDbObjectId block;
        AcUtSymTbl::defineNewBlock(name.c_str(), block, database());
        add(std::move(entity), name.c_str());
        const AcDbObjectId reference = addReference(block);
        this->clip(reference, clip);
        AcDbObjectIdArray made;
        AcUtBlockReferenceExploder exploder({});
        EXPECT_EQ(exploder.explode(reference, made), Acad::eOk);
        EXPECT_EQ(exploder.leftOut(), 0);
        std::vector<std::unique_ptr<AcDbEntity>> parts;
        for (int i = 0; i < made.length(); ++i) {
            const ReadHandle<AcDbEntity> part(made[i]);
            parts.emplace_back(AcDbEntity::cast(part->clone()));
        }
        return parts;
    }

    /// The length that is left of a curve.
    double lengthLeft(std::unique_ptr<AcDbEntity> curve, const Clip& clip) {
        double sum = 0.0;
        for (const auto& part : shown(std::move(curve), clip)) {
            const auto* const left = AcDbCurve::cast(part.get());
            double end = 0.0, length = 0.0;
            left->getEndParam(end);
            left->getDistAtParam(end, length);
            sum += length;
        }
        return sum;
    }

private:
    int count_ = 0;
};

template <class Curve>
std::unique_ptr<AcDbEntity> make(Curve* curve) {
    return std::unique_ptr<AcDbEntity>(curve);
}

std::unique_ptr<AcDbEntity> line(double x1, double y1, double x2, double y2) {
    return std::make_unique<AcDbLine>(AcGePoint3d(x1, y1, 0), AcGePoint3d(x2, y2, 0));
}

std::unique_ptr<AcDbEntity> circle(double x, double y, double radius) {
    return std::make_unique<AcDbCircle>(AcGePoint3d(x, y, 0), AcGeVector3d::kZAxis, radius);
}

/// A closed square of side 2 about the origin whose right side is a half circle outwards.
std::unique_ptr<AcDbEntity> roundedSquare() {
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->addVertexAt(0, {-1, -1});
    polyline->addVertexAt(1, {1, -1}, 1.0);
    polyline->addVertexAt(2, {1, 1});
    polyline->addVertexAt(3, {-1, 1});
    polyline->setClosed(true);
    return polyline;
}

TEST_F(ClippedEntities, AreCutAtTheBoundary) {
    const Clip square{{{-1, -1}, {1, 1}}};
    const Clip triangle{{{0, 0}, {4, 0}, {0, 4}}};
    const Clip notch{{{0, 0}, {4, 0}, {4, 4}, {2, 1}, {0, 4}}};
    struct Case {
        const char* name;
        std::unique_ptr<AcDbEntity> curve;
        Clip clip;
        double whole, left; // lengths by hand
    };
    Case cases[] = {
        {"inside", line(-0.5, 0, 0.5, 0), square, 1.0, 1.0},
        {"outside", line(2, 0, 3, 0), square, 1.0, 0.0},
        {"through", line(-3, 0, 5, 0), square, 8.0, 2.0},
        {"along an edge", line(-3, 1, 3, 1), square, 6.0, 2.0},
        {"across corners", line(-2, -2, 2, 2), square, 4 * std::sqrt(2.0), 2 * std::sqrt(2.0)},
        {"touching a corner", line(0, 2, 2, 0), square, 2 * std::sqrt(2.0), 0.0},
        {"in and out of a notch", line(0, 2, 4, 2), notch, 4.0, 8.0 / 3},
        {"circle around a corner", circle(0, 0, 1), triangle, 2 * pi, pi / 2},
        {"circle over two sides", circle(0, 0, std::sqrt(2.0)), square, 2 * std::sqrt(2.0) * pi,
         0.0},
        {"circle through the square", circle(0, 0, 2 / std::sqrt(3.0)), square,
         4 * pi / std::sqrt(3.0), 4 * pi / std::sqrt(3.0) / 3},
        {"whole circle", circle(0, 0, 0.5), square, pi, pi},
        {"arc", make(new AcDbArc(AcGePoint3d(), 2, 0, pi)), {{{0, -5}, {5, 5}}}, 2 * pi, pi},
        {"polyline with an arc", roundedSquare(), {{{1, -5}, {5, 5}}}, 6 + pi, pi},
        {"polyline across its start", roundedSquare(), {{{-5, -5}, {0, 0}}}, 6 + pi, 2.0},
    };
    for (Case& c : cases) {
        SCOPED_TRACE(c.name);
        Clip inverted = c.clip;
        inverted.inverted = true;
        auto copy = std::unique_ptr<AcDbEntity>(AcDbEntity::cast(c.curve->clone()));
        const double left = lengthLeft(std::move(c.curve), c.clip);
        EXPECT_NEAR(left, c.left, 1e-9);
        // What lies on the boundary is shown by both.
        if (std::string(c.name) == "along an edge") continue;
        EXPECT_NEAR(lengthLeft(std::move(copy), inverted), c.whole - c.left, 1e-9);
    }
}

TEST_F(ClippedEntities, OfAnyKindOfCurveAddUp) {
    AcGePoint3dArray points;
    for (const AcGePoint3d& p :
         {AcGePoint3d(-3, 0, 0), AcGePoint3d(-1, 4, 0), AcGePoint3d(1, -4, 0), AcGePoint3d(3, 1, 0),
          AcGePoint3d(5, -2, 0)})
        points.append(p);
    AcGeDoubleArray bulges;
    for (const double bulge : {0.4, -0.7, 0.0, 1.0, 0.0})
        bulges.append(bulge);
    std::unique_ptr<AcDbEntity> curves[] = {
        make(new AcDbSpline(points)),
        make(new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 0.0, Adesk::kTrue, 0.0, 0.0, &bulges)),
        make(new AcDb3dPolyline(AcDb::k3dSimplePoly, points, Adesk::kFalse)),
        make(new AcDbEllipse(AcGePoint3d(1, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(3, 2, 0),
                             0.5)),
    };
    for (auto& curve : curves) {
        SCOPED_TRACE(curve->isA()->name());
        double end = 0.0, whole = 0.0;
        AcDbCurve::cast(curve.get())->getEndParam(end);
        AcDbCurve::cast(curve.get())->getDistAtParam(end, whole);
        Clip clip{{{-2, -1}, {3, -1}, {1, 2}}};
        auto copy = std::unique_ptr<AcDbEntity>(AcDbEntity::cast(curve->clone()));
        const double inside = lengthLeft(std::move(curve), clip);
        clip.inverted = true;
        const double outside = lengthLeft(std::move(copy), clip);
        EXPECT_GT(inside, 0.2);
        EXPECT_GT(outside, 0.5);
        EXPECT_NEAR(inside + outside, whole, 1e-8);
    }
}

TEST_F(ClippedEntities, MayEndNowhere) {
    const auto xline = [] {
        auto made = std::make_unique<AcDbXline>();
        made->setBasePoint(AcGePoint3d(0, 0.5, 0));
        made->setUnitDir(AcGeVector3d::kXAxis);
        return made;
    };
    EXPECT_NEAR(lengthLeft(xline(), {{{-1, -1}, {1, 1}}}), 2.0, 1e-12);
    const auto rest = shown(xline(), {{{-1, -1}, {1, 1}}, true});
    ASSERT_EQ(rest.size(), 2U);
    for (const auto& part : rest)
        EXPECT_TRUE(part->isKindOf(AcDbRay::desc()));
}

TEST_F(ClippedEntities, ThatAreNoCurvesStayWholeWhereTheyShow) {
    const auto solid = [](double x, double size) {
        return std::make_unique<AcDbSolid>(AcGePoint3d(x, -0.1, 0), AcGePoint3d(x + size, -0.1, 0),
                                           AcGePoint3d(x, 0.1, 0), AcGePoint3d(x + size, 0.1, 0));
    };
    const struct {
        const char* name;
        double x, size;
        std::size_t inside, outside;
    } cases[] = {
        {"within", -0.5, 1, 1, 0},
        {"overlapping", 0.5, 1, 1, 1},
        {"beside", 2, 1, 0, 1},
        {"across", -5, 10, 1, 1},
    };
    const Clip square{{{-1, -1}, {1, 1}}};
    const Clip hole{{{-1, -1}, {1, 1}}, true};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(shown(solid(c.x, c.size), square).size(), c.inside);
        EXPECT_EQ(shown(solid(c.x, c.size), hole).size(), c.outside);
    }
    const Clip small{{{0, -0.01}, {0.01, 0.01}}};
    EXPECT_EQ(shown(solid(-5, 10), small).size(), 1U) << "the boundary lies within the box";
}

} // namespace
