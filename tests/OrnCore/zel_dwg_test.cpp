#include "OrnCore/zel_dwg.h"

#include <numbers>

#include <dbents.h>

#include "OrnCore/text_info.h"
#include "OrnCore/zel_math.h"
#include "support/session_fixture.h"

namespace {

using std::numbers::pi;

TEST(ZelMath, ComparesWithinTolerances) {
    const struct {
        double a, b;
        int equal, equalLess, equalMore, less, more;
    } cases[] = {
        {1.0, 1.0, 1, 1, 1, 0, 0},  {1.0, 1.5, 1, 1, 1, 0, 0},  {1.5, 1.0, 1, 1, 1, 0, 0},
        {1.0, 1.75, 0, 1, 0, 1, 0}, {1.75, 1.0, 0, 0, 1, 0, 1}, {1.0, 5.0, 0, 1, 0, 1, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.a << " and " << c.b);
        EXPECT_EQ(CZelMath::EqualTo(c.a, c.b, 0.5), c.equal);
        EXPECT_EQ(CZelMath::EqualLess(c.a, c.b, 0.5), c.equalLess);
        EXPECT_EQ(CZelMath::EqualMore(c.a, c.b, 0.5), c.equalMore);
        EXPECT_EQ(CZelMath::Less(c.a, c.b, 0.5), c.less);
        EXPECT_EQ(CZelMath::More(c.a, c.b, 0.5), c.more);
    }
    EXPECT_EQ(CZelMath::More(1.0 + 5e-7, 1.0), 0); // by the default tolerance
    EXPECT_EQ(CZelMath::More(1.0 + 2e-6, 1.0), 1);
    EXPECT_EQ(CZelMath::IsZero(-1e-7), 1);
    EXPECT_EQ(CZelMath::IsZero(-1e-7, 1e-8), 0);
    EXPECT_EQ(CZelMath::EqualTo(std::nan(""), 0.0, 1.0), 0);
}

TEST(ZelDwgPoints, AreEqualAfterRounding) {
    const struct {
        const char* name;
        AcGePoint3d a, b;
        int decimals;
        bool equal;
    } cases[] = {
        {"same", {1, 2, 3}, {1, 2, 3}, 3, true},
        {"rounding to the same", {0.0004, 0, 0}, {-0.0004, 0, 0}, 3, true},
        {"near, but rounding apart", {0.0006, 0, 0}, {0.0004, 0, 0}, 3, false},
        {"y counts", {0, 0.001, 0}, {0, 0, 0}, 3, false},
        {"z counts", {0, 0, 1}, {0, 0, 0}, 0, false},
        {"whole units", {10.4, 9.6, 0}, {10, 10, 0}, 0, true},
        {"half away from zero", {0.5, 0, 0}, {1, 0, 0}, 0, true},
        {"tens", {14, 0, 0}, {6, 0, 0}, -1, true},
        {"more decimals than a number has", {1e10, 0, 0}, {1e10, 0, 0}, 1000, true},
        {"not a number", {std::nan(""), 0, 0}, {std::nan(""), 0, 0}, 3, false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CZelDwg::EqualPoint(c.a, c.b, c.decimals), c.equal) << c.name;
}

TEST(ZelDwgPoints, AreMeasuredAndMoved) {
    EXPECT_DOUBLE_EQ(CZelDwg::GetLength({1, 1, 1}, {2, 3, 3}), 3.0);
    EXPECT_EQ(CZelDwg::GetLineMidPoint({0, 2, 4}, {10, 4, 0}), AcGePoint3d(5, 3, 2));
    EXPECT_EQ(CZelDwg::GetUprightPoint({3, 7, 2}, {0, 0, 0}, {1, 0, 0}), AcGePoint3d(3, 0, 0));
    EXPECT_EQ(CZelDwg::GetUprightPoint({4, 0, 0}, {0, 0, 0}, {10, 10, 0}), AcGePoint3d(2, 2, 0));
    EXPECT_EQ(CZelDwg::GetUprightPoint({4, 0, 0}, {1, 1, 1}, {1, 1, 1}), AcGePoint3d(1, 1, 1));
    AcGePoint3d point(1, 1, 7);
    EXPECT_EQ(CZelDwg::MovePtTo(point, 2, pi / 2), AcGePoint3d(1, 3, 7));
    EXPECT_EQ(point, AcGePoint3d(1, 3, 7));
}

TEST(ZelDwgPoints, HaveDirections) {
    const struct {
        AcGePoint3d to;
        double degrees;
    } cases[] = {{{1, 0, 5}, 0},    {{1, 1, 0}, 45},   {{0, 2, 0}, 90},
                 {{-3, 0, 0}, 180}, {{0, -1, 0}, 270}, {{1, -1, 0}, 315},
                 {{0, 0, 9}, 0},    {{1, -0.0, 0}, 0}, {{1, -1e-300, 0}, 0}};
    for (const auto& c : cases) {
        EXPECT_NEAR(CZelDwg::GetAngle({0, 0, 0}, c.to, 0), c.degrees, 1e-12);
        EXPECT_NEAR(CZelDwg::GetAngle({0, 0, 0}, c.to, 1), c.degrees * pi / 180, 1e-14);
    }
}

TEST(ZelDwgPoints, AreWhereSegmentsMeet) {
    const struct {
        const char* name;
        AcGePoint3d start, end; // of the second; the first runs from 0 to 10 along x, 3 high
        int count;
        double x;
    } cases[] = {
        {"crossing", {4, -1, 0}, {4, 1, 9}, 1, 4},
        {"ending on it", {4, 0, 0}, {4, 1, 0}, 1, 4},
        {"ending nearly on it", {4, 5e-7, 0}, {4, 1, 0}, 1, 4},
        {"stopping short", {4, 2e-6, 0}, {4, 1, 0}, 0, -1},
        {"end to end", {10, 0, 0}, {10, 5, 0}, 1, 10},
        {"beyond the end", {10.1, -1, 0}, {10.1, 5, 0}, 0, -1},
        {"running together", {12, 0, 0}, {7, 0, 0}, 2, 7},
        {"beside it", {0, 1, 0}, {10, 1, 0}, 0, -1},
        {"a point on it", {3, 0, 0}, {3, 0, 0}, 1, 3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AcGePoint3d at(-1, 0, 3);
        EXPECT_EQ(CZelDwg::GetLineInterSect({0, 0, 3}, {10, 0, 3}, c.start, c.end, at), c.count);
        EXPECT_EQ(at.x, c.x);
        EXPECT_NEAR(at.y, 0.0, 1e-6);
        EXPECT_EQ(at.z, 3.0);
    }
}

class ZelDwg : public test_support::SessionTest {};

TEST_F(ZelDwg, DrawsLines) {
    const AcDbObjectId layer = CZelDwg::AddLayer(L"RULING", 3, L"Continuous", 0);
    const AcDbObjectId plain =
        CZelDwg::AddLine({1, 2, 3}, {4, 5, 6}, AcDbObjectId::kNull, nullptr, nullptr);
    const AcDbObjectId layered = CZelDwg::AddLine({0, 0, 0}, {1, 0, 0}, layer, nullptr, database());
    AcDbLine* line = nullptr;
    ASSERT_EQ(acdbOpenObject(line, plain, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(line->startPoint(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(line->endPoint(), AcGePoint3d(4, 5, 6));
    EXPECT_EQ(line->layerId(), database()->clayer());
    line->close();
    ASSERT_EQ(acdbOpenObject(line, layered, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(line->layerId(), layer);
    line->close();
    resbuf unknownApplication{};
    wchar_t name[] = L"NOBODY";
    unknownApplication.restype = 1001; // of an application
    unknownApplication.resval.rstring = name;
    EXPECT_TRUE(
        CZelDwg::AddLine({0, 0, 0}, {1, 0, 0}, layer, &unknownApplication, nullptr).isNull());
}

// The host's own box of the same text in a drawing, which is not tilted.
TEST_F(ZelDwg, TextsAreAsWideAsTheirBoxes) {
    for (const wchar_t* text : {L"W", L"12.5 m", L"墙板", L"%%c20"}) {
        AcDbText drawn({5, 5, 0}, text, AcDbObjectId::kNull, 30.0);
        drawn.setWidthFactor(0.8);
        AcDbExtents box;
        ASSERT_EQ(drawn.getGeomExtents(box), Acad::eOk);
        EXPECT_NEAR(CZelDwg::GetTextWidth(text, {.widthFactor = 0.8, .height = 30.0}),
                    box.maxPoint().x - box.minPoint().x, 1e-9);
    }
    const double one = CZelDwg::GetTextWidth(L"W", {.height = 1.0});
    EXPECT_GT(one, 0.5);
    EXPECT_NEAR(CZelDwg::GetTextWidth(L"WWW", {.height = 10.0}), 30.0 * one, 1e-9);
    EXPECT_EQ(CZelDwg::GetTextWidth(L"", {.height = 10.0}), 0.0);
    EXPECT_EQ(CZelDwg::GetTextWidth(L"W", {}), 0.0);
}

TEST_F(ZelDwg, OutlinesInAnyPlane) {
    AcDbPolyline board; // with a half disc on its right side, to x = 15
    board.addVertexAt(0, {0, 0});
    board.addVertexAt(1, {10, 0}, 1.0);
    board.addVertexAt(2, {10, 10});
    board.addVertexAt(3, {0, 10}, -1.0); // takes a half disc away when closed
    const double half = 12.5 * pi;
    EXPECT_NEAR(CZelDwg::GetPolylineArea(&board), 100 + half, 1e-9);
    board.setClosed(true);
    EXPECT_NEAR(CZelDwg::GetPolylineArea(&board), 100.0, 1e-9);
    board.reverseCurve();
    EXPECT_NEAR(CZelDwg::GetPolylineArea(&board), 100.0, 1e-9);
    EXPECT_EQ(CZelDwg::GetPolylineArea(nullptr), 0.0);

    board.setElevation(50);
    EXPECT_EQ(CZelDwg::PtInClosePolygon(&board, {14, 5, 0}, 1e-6), 1);
    EXPECT_EQ(CZelDwg::PtInClosePolygon(&board, {2, 5, 0}, 1e-6), -1);
    EXPECT_EQ(CZelDwg::PtInClosePolygon(&board, {15, 5, 7}, 1e-6), 0);
    EXPECT_EQ(CZelDwg::PtInClosePolygon(static_cast<AcDbPolyline*>(nullptr), {0, 0, 0}, 1), -1);

    board.setNormal(-AcGeVector3d::kZAxis); // x runs the other way now
    EXPECT_EQ(CZelDwg::PtInClosePolygon(&board, {-14, 5, 0}, 1e-6), 1);
    EXPECT_EQ(CZelDwg::PtInClosePolygon(&board, {14, 5, 0}, 1e-6), -1);
    board.setNormal(AcGeVector3d::kXAxis); // its x and y are the world's y and z
    EXPECT_EQ(CZelDwg::PtInClosePolygon(&board, {-3, 14, 5}, 1e-6), 1);
    EXPECT_EQ(CZelDwg::PtInClosePolygon(&board, {14, 5, 0}, 1e-6), 0);
}

TEST_F(ZelDwg, PolygonsComeByReferenceOrPointer) {
    AcGePoint3dArray square;
    for (const AcGePoint3d& p : {AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 9),
                                 AcGePoint3d(10, 10, 0), AcGePoint3d(0, 10, -9)})
        square.append(p);
    EXPECT_EQ(CZelDwg::PtInClosePolygon(square, {5, 5, 99}, 1e-6), 1);
    EXPECT_EQ(CZelDwg::PtInClosePolygon(&square, {10, 5, 0}, 1e-6), 0);
    EXPECT_EQ(CZelDwg::PtInClosePolygon(&square, {11, 5, 0}, 1e-6), -1);
    EXPECT_EQ(CZelDwg::PtInClosePolygon(static_cast<AcGePoint3dArray*>(nullptr), {0, 0, 0}, 1), -1);
}

TEST_F(ZelDwg, AddedEntitiesStayOpenOnlyWhenAskedTo) {
    for (const int keepOpen : {0, 1}) {
        auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(3, 4, 0));
        const AcDbObjectId id = CZelDwg::AddEntity(line, nullptr, keepOpen, 1);
        ASSERT_TRUE(id.isValid());
        AcDbObject* object = nullptr;
        EXPECT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead),
                  keepOpen != 0 ? Acad::eWasOpenForWrite : Acad::eOk);
        line->close();
        const AcDbExtents box = CZelDwg::GetGeomExtents(id);
        EXPECT_EQ(box.minPoint(), AcGePoint3d(0, 0, 0));
        EXPECT_EQ(box.maxPoint(), AcGePoint3d(3, 4, 0));
    }
}

TEST_F(ZelDwg, RefusedEntitiesAreReportedWhenAskedTo) {
    EXPECT_TRUE(CZelDwg::AddEntity(nullptr, database(), 1, 0).isNull());
    EXPECT_EQ(session().output(), L"");
    EXPECT_TRUE(CZelDwg::AddEntity(nullptr, database(), 1, 1).isNull());
    EXPECT_EQ(session().output(), L"\nARX ERROR: eNullEntityPointer");
}

TEST_F(ZelDwg, ExtentsOfNothingAreEmpty) {
    const AcDbExtents none = CZelDwg::GetGeomExtents(AcDbObjectId::kNull);
    EXPECT_GT(none.minPoint().x, none.maxPoint().x);
    const AcDbExtents notAnEntity = CZelDwg::GetGeomExtents(database()->layerZero());
    EXPECT_GT(notAnEntity.minPoint().x, notAnEntity.maxPoint().x);
}

} // namespace
