// What windows, crossing polygons, fences and pick boxes select: exact geometry, not boxes.
#include <cmath>

#include <gmock/gmock.h>

#include "../layerpick/square_hatch.h"
#include "db/block_reference.h"
#include "db/dictionary.h"
#include "db/face.h"
#include "db/hatch.h"
#include "db/polyline.h"
#include "db/ray.h"
#include "db/solid.h"
#include "db/spatial_filter.h"
#include "db/text.h"
#include "drawn_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Points = std::vector<AcGePoint3d>;

class SelectionByPlace : public DrawnTest {
protected:
    std::unique_ptr<AcDbHatch> nestedSquares(AcDbHatch::HatchStyle style) {
        enttest::Groups groups = {{100, "AcDbHatch"}, {2, "SOLID"}, {70, "1"}, {91, "4"}};
        for (const double inset : {0.0, 10.0, 20.0, 30.0}) {
            const enttest::Groups loop = squareLoop(inset, inset, 100.0 - 2.0 * inset);
            groups.insert(groups.end(), loop.begin(), loop.end());
            groups.emplace_back(97, "0");
        }
        groups.emplace_back(75, std::to_string(style));
        groups.emplace_back(76, "1");
        groups.emplace_back(98, "0");
        return enttest::read<AcDbHatch>(drawing(), groups);
    }
    /// Clips a reference to a polygon in the coordinates of the world.
    void clip(AcDbObjectId reference, const Points& polygon) {
        AcDbObjectPointer<AcDbBlockReference> opened(reference, AcDb::kForWrite);
        opened->createExtensionDictionary();
        AcGePoint2dArray points;
        const AcGeMatrix3d toBlock = opened->blockTransform().inverse();
        for (const AcGePoint3d& point : polygon) {
            const AcGePoint3d own = toBlock * point;
            points.append(AcGePoint2d(own.x, own.y));
        }
        auto* const filter = new AcDbSpatialFilter;
        filter->setDefinition(points, AcGeVector3d::kZAxis, 0.0, ACDB_INFINITE_XCLIP_DEPTH,
                              -ACDB_INFINITE_XCLIP_DEPTH, true);
        auto* const filters = new AcDbDictionary;
        AcDbObjectId id;
        AcDbObjectPointer<AcDbDictionary> extension(opened->extensionDictionary(), AcDb::kForWrite);
        ASSERT_EQ(extension->setAt(L"ACAD_FILTER", filters, id), Acad::eOk);
        ASSERT_EQ(filters->setAt(L"SPATIAL", filter, id), Acad::eOk);
        filter->close();
        filters->close();
    }

    static Ids select(const wchar_t* mode, const Points& points, const resbuf* filter = nullptr) {
        resbuf* chain = nullptr;
        for (const AcGePoint3d& point : points) {
            resbuf* const next = acutNewRb(RT3DPOINT);
            next->resval.rpoint[0] = point.x;
            next->resval.rpoint[1] = point.y;
            next->resval.rpoint[2] = point.z;
            next->rbnext = chain;
            chain = next;
        }
        ads_name set;
        const Ids ids = take(acedSSGet(mode, chain, nullptr, filter, set), set);
        acutRelRb(chain);
        return ids;
    }
    static Ids box(const wchar_t* mode, const AcGePoint3d& a, const AcGePoint3d& b,
                   const resbuf* filter = nullptr) {
        const ads_point first = {a.x, a.y, a.z};
        const ads_point second = {b.x, b.y, b.z};
        ads_name set;
        return take(acedSSGet(mode, first, second, filter, set), set);
    }
    static Ids pick(const AcGePoint3d& at) {
        const ads_point point = {at.x, at.y, at.z};
        ads_name set;
        return take(acedSSGet(nullptr, point, nullptr, nullptr, set), set);
    }
};

TEST_F(SelectionByPlace, BoxesTakeWhatIsInsideOrCrosses) {
    const AcDbObjectId inside = line({1, 1, 0}, {2, 2, 0});
    const AcDbObjectId across = line({-5, 5, 0}, {5, 5, 0});
    const AcDbObjectId around = circle({5, 5, 0}, 20);
    line({-9, 10, 0}, {10, 29, 0}); // Only its box comes near.
    const AcDbObjectId ring = circle({10, 10, 0}, 3);
    EXPECT_THAT(box(L"W", {0, 0, 0}, {10, 10, 0}), ElementsAre(inside));
    EXPECT_THAT(box(L"C", {10, 10, 0}, {0, 0, 0}), ElementsAre(ring, across, inside));
    EXPECT_THAT(select(L"CP", {{0, 0, 0}, {10, 0, 0}, {0, 10, 0}}), ElementsAre(across, inside));
    EXPECT_THAT(select(L"WP", {{-6, 0, 0}, {6, 0, 0}, {6, 6, 0}, {-6, 6, 0}}),
                ElementsAre(across, inside));
    EXPECT_THAT(select(L"F", {{-30, 0, 0}, {0, 0, 0}, {1.5, 1.5, 0}}), ElementsAre(around, inside));
    EXPECT_THAT(box(L"C", {100, 0, 0}, {110, 9, 0}), IsEmpty());

    const std::unique_ptr<resbuf, int (*)(resbuf*)> circles(
        acutBuildList(RTDXF0, L"CIRCLE", RTNONE), &acutRelRb);
    EXPECT_THAT(box(L"_C", {0, 0, 0}, {10, 10, 0}, circles.get()), ElementsAre(ring));
}

TEST_F(SelectionByPlace, AWindowAroundAConcaveWayOutDoesNotHoldIt) {
    // A U: the line from arm to arm leaves it between them.
    const Points letterU = {{0, 0, 0},   {30, 0, 0},  {30, 30, 0}, {20, 30, 0},
                            {20, 10, 0}, {10, 10, 0}, {10, 30, 0}, {0, 30, 0}};
    line({5, 20, 0}, {25, 20, 0});
    const AcDbObjectId within = line({5, 5, 0}, {25, 5, 0});
    EXPECT_THAT(select(L"WP", letterU), ElementsAre(within));
}

TEST_F(SelectionByPlace, HatchesAreWhereTheirStyleFillsThem) {
    // Squares within each other: 0 to 100, 10 to 90, 20 to 80, 30 to 70.
    const struct {
        AcDbHatch::HatchStyle style;
        bool taken[4]; // between the edges, from the outermost inwards
    } cases[] = {
        {AcDbHatch::kNormal, {true, false, true, false}},
        {AcDbHatch::kOuter, {true, false, false, false}},
        {AcDbHatch::kIgnore, {true, true, true, true}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.style);
        const AcDbObjectId hatch = put(nestedSquares(c.style).release());
        for (int ring = 0; ring < 4; ++ring) {
            const double x = 10.0 * ring + 4.5;
            EXPECT_EQ(box(L"C", {x, 50, 0}, {x + 1, 51, 0}) == Ids{hatch}, c.taken[ring]) << ring;
        }
        const bool showsThirdEdge = c.style == AcDbHatch::kNormal;
        EXPECT_EQ(box(L"C", {19, 50, 0}, {19.9, 51, 0}) == Ids{hatch},
                  c.style == AcDbHatch::kIgnore);
        EXPECT_EQ(box(L"C", {19.5, 50, 0}, {20.5, 51, 0}) == Ids{hatch},
                  showsThirdEdge || c.style == AcDbHatch::kIgnore);
        erase(hatch);
    }
}

/// A closed or an open chain of two or three vertices.
AcDbPolyline* chain(std::initializer_list<AcGePoint2d> points, double bulge, double startWidth,
                    double endWidth) {
    auto* const polyline = new AcDbPolyline;
    for (const AcGePoint2d& point : points)
        polyline->addVertexAt(polyline->numVerts(), point, bulge, startWidth, endWidth);
    return polyline;
}

AcDbText* turnedText(double rotation, double oblique, bool mirrored) {
    auto* const text = new AcDbText({0, 0, 0}, L"HHHH", AcDbObjectId::kNull, 10.0, rotation);
    text->setOblique(oblique);
    text->mirrorInX(mirrored);
    return text;
}

TEST_F(SelectionByPlace, WhatIsFilledIsTakenByItsInside) {
    const double quarter = std::acos(0.0);
    const double eighth = quarter / 2.0;
    auto* const face = new AcDbFace({0, 0, 0}, {20, 0, 0}, {20, 20, 0}, {0, 20, 0});
    face->makeEdgeInvisibleAt(1);
    const struct {
        const char* name;
        AcDbEntity* entity;
        AcGePoint3d on, beside;
    } cases[] = {
        {"a wide line", chain({{0, 0}, {50, 0}}, 0, 10, 10), {25, 4.9, 0}, {25, 5.1, 0}},
        {"a tapering one", chain({{0, 0}, {50, 0}}, 0, 20, 0), {25, 4.9, 0}, {25, 5.1, 0}},
        {"its wide end", chain({{0, 0}, {50, 0}}, 0, 20, 0), {1, 9, 0}, {-0.2, 9, 0}},
        {"a wide arc's outer edge",
         chain({{0, 0}, {50, 0}}, 1, 10, 10),
         {25, -29.9, 0},
         {25, -30.1, 0}},
        {"its inner edge", chain({{0, 0}, {50, 0}}, 1, 10, 10), {25, -20.1, 0}, {25, -19.9, 0}},
        {"a mitre",
         chain({{0, 0}, {50, 0}, {50, 50}}, 0, 10, 10),
         {54.8, -4.8, 0},
         {55.1, -4.8, 0}},
        {"a solid",
         new AcDbSolid({0, 0, 0}, {20, 0, 0}, {0, 20, 0}, {20, 20, 0}),
         {10, 10, 0},
         {21, 10, 0}},
        {"text that stands upright", turnedText(quarter, 0, false), {-5, 20, 0}, {5, 20, 0}},
        {"text that climbs", turnedText(eighth, 0, false), {10, 14, 0}, {10, 1, 0}},
        {"text in a mirror", turnedText(0, 0, true), {-20, 5, 0}, {20, 5, 0}},
        {"text that leans", turnedText(0, eighth, false), {10, 9.5, 0}, {9, 9.5, 0}},
        {"a face by an edge that shows", face, {10, 0, 0}, {20, 10, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const AcDbObjectId id = put(c.entity);
        const auto at = [](const AcGePoint3d& p) {
            return box(L"C", p, {p.x + 0.01, p.y + 0.01, 0});
        };
        EXPECT_THAT(at(c.on), ElementsAre(id));
        EXPECT_THAT(at(c.beside), IsEmpty());
        erase(id);
    }
}

TEST_F(SelectionByPlace, WhatIsHiddenIsPassedOver) {
    const AcDbObjectId seen = line({0, 0, 0}, {1, 0, 0});
    setLayer(line({0, 0, 0}, {1, 0, 0}), layer(L"dark", true));
    setLayer(line({0, 0, 0}, {1, 0, 0}), layer(L"cold", false, true));
    {
        AcDbObjectPointer<AcDbEntity> ghost(line({0, 0, 0}, {1, 0, 0}), AcDb::kForWrite);
        ghost->setVisibility(AcDb::kInvisible);
    }
    erase(line({0, 0, 0}, {1, 0, 0}));
    EXPECT_THAT(box(L"C", {-1, -1, 0}, {2, 1, 0}), ElementsAre(seen));
}

TEST_F(SelectionByPlace, ReferencesByTheirContents) {
    const AcDbObjectId inner = block(L"inner");
    line({0, 0, 0}, {10, 10, 0}, inner);
    setLayer(line({0, 10, 0}, {10, 10, 0}, inner), layer(L"dark", true));
    const AcDbObjectId outer = block(L"outer");
    put(new AcDbBlockReference({100, 0, 0}, inner), outer);
    auto* const mirrored = new AcDbBlockReference({0, 0, 0}, outer);
    mirrored->setScaleFactors({-2, 1, 1});
    const AcDbObjectId top = put(mirrored);
    // The line runs from (-200, 0) to (-220, 10).
    EXPECT_THAT(box(L"C", {-211, 4.9, 0}, {-209, 5.1, 0}), ElementsAre(top));
    EXPECT_THAT(box(L"C", {-219, 1, 0}, {-212, 2, 0}), IsEmpty()) << "beside the line";
    EXPECT_THAT(box(L"C", {-206, 9, 0}, {-204, 11, 0}), IsEmpty()) << "on a layer that is off";
    EXPECT_THAT(box(L"W", {-221, -1, 0}, {-199, 11, 0}), ElementsAre(top));
    EXPECT_THAT(box(L"W", {-215, -1, 0}, {-199, 11, 0}), IsEmpty());
}

TEST_F(SelectionByPlace, ClipsHideWhatTheyHide) {
    const AcDbObjectId cross = block(L"cross");
    line({-10, 0, 0}, {10, 0, 0}, cross);
    const AcDbObjectId reference = put(new AcDbBlockReference({100, 50, 0}, cross));
    clip(reference, {{95, 40, 0}, {105, 60, 0}});
    EXPECT_THAT(box(L"C", {99, 49, 0}, {101, 51, 0}), ElementsAre(reference));
    EXPECT_THAT(box(L"C", {106, 49, 0}, {109, 51, 0}), IsEmpty());
    EXPECT_THAT(box(L"C", {104, 49, 0}, {109, 51, 0}), ElementsAre(reference));
    EXPECT_THAT(box(L"W", {94, 49, 0}, {106, 51, 0}), ElementsAre(reference))
        << "the hidden ends need not be inside";
}

TEST_F(SelectionByPlace, PointsAreUserCoordinatesAndPixelsMakeTheBox) {
    headless::View view;
    view.height = 900.0; // A unit a pixel.
    show(view);
    const AcDbObjectId below = line({0, 0, 0}, {100, 0, 0});
    const AcDbObjectId above = line({0, 0, 0}, {100, 0, 0});
    EXPECT_THAT(pick({50, 2.9, 0}), ElementsAre(above));
    EXPECT_THAT(pick({50, 3.1, 0}), IsEmpty());
    erase(above);
    setUcs({0, 40, 0}, {0, 1, 0}, {-1, 0, 0});
    // User x runs up the world's y from 40.
    EXPECT_THAT(pick({-40, -50, 0}), ElementsAre(below));
    EXPECT_THAT(box(L"C", {-41, -99, 0}, {-39, -1, 0}), ElementsAre(below));
}

TEST_F(SelectionByPlace, LinesOfSightGoThroughTheDrawing) {
    headless::View front;
    front.direction = AcGeVector3d(0, -1, 0); // x to the right, z up
    front.height = 100.0;
    show(front);
    const AcDbObjectId post = line({5, 30, 0}, {5, 30, 20});
    line({50, 30, 0}, {50, 30, 20});
    EXPECT_THAT(box(L"C", {0, 0, 5}, {10, 0, 6}), ElementsAre(post));
}

TEST_F(SelectionByPlace, RaysAreTakenWhereTheyGo) {
    auto* const made = new AcDbRay;
    made->setBasePoint({0, 5, 0});
    made->setUnitDir({1, 0, 0});
    const AcDbObjectId ray = put(made);
    EXPECT_THAT(box(L"C", {1e5, 0, 0}, {1e5 + 1, 10, 0}), ElementsAre(ray));
    EXPECT_THAT(box(L"C", {-20, 0, 0}, {-10, 10, 0}), IsEmpty());
    EXPECT_THAT(box(L"W", {-20, 0, 0}, {1e6, 10, 0}), IsEmpty());
}

} // namespace
