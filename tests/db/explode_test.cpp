// What entities are taken apart into: the parts together are the whole.
#include <numbers>

#include "db/arc.h"
#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/circle.h"
#include "db/dimension.h"
#include "db/ellipse.h"
#include "db/face.h"
#include "db/line.h"
#include "db/mline.h"
#include "db/mtext.h"
#include "db/opaque.h"
#include "db/polyface_mesh.h"
#include "db/polygon_mesh.h"
#include "db/polyline.h"
#include "db/polyline_2d.h"
#include "db/polyline_3d.h"
#include "db/text.h"
#include "entity_support.h"

namespace {

using coretest::CoreTest;
using coretest::Groups;
using coretest::put;
using enttest::boxOf;
using std::numbers::pi;

using Parts = std::vector<std::unique_ptr<AcDbEntity>>;

class Explode : public CoreTest {
protected:
    static Parts partsOf(const AcDbEntity& whole) {
        AcDbVoidPtrArray pieces;
        EXPECT_EQ(whole.explode(pieces), Acad::eOk);
        Parts parts;
        for (void* const piece : pieces)
            parts.emplace_back(static_cast<AcDbEntity*>(piece));
        return parts;
    }
    static enttest::Box boxOfAll(const Parts& parts) {
        AcDbExtents all;
        for (const auto& part : parts) {
            AcDbExtents box;
            EXPECT_EQ(part->getGeomExtents(box), Acad::eOk);
            all.addExt(box);
        }
        return {all.minPoint(), all.maxPoint()};
    }
    static double lengthOf(const AcDbCurve& curve) {
        double end = 0.0, length = 0.0;
        EXPECT_EQ(curve.getEndParam(end), Acad::eOk);
        EXPECT_EQ(curve.getDistAtParam(end, length), Acad::eOk);
        return length;
    }
    template <class T>
    static std::size_t count(const Parts& parts) {
        return static_cast<std::size_t>(std::count_if(
            parts.begin(), parts.end(), [](const auto& part) { return T::cast(part.get()); }));
    }
    /// The parts take the whole's place, length and layer.
    static void expectSameCurve(const AcDbCurve& whole, const Parts& parts) {
        enttest::expectNear(boxOfAll(parts), boxOf(whole));
        double length = 0.0;
        for (const auto& part : parts) {
            length += lengthOf(*AcDbCurve::cast(part.get()));
            EXPECT_EQ(part->layerId(), whole.layerId());
            EXPECT_EQ(part->colorIndex(), whole.colorIndex());
        }
        EXPECT_NEAR(length, lengthOf(whole), 1e-9);
    }

    AcDbObjectId block(const ACHAR* name) {
        return coretest::addRecord<AcDbBlockTableRecord>(db.blockTableId(), name);
    }
    AcDbPolyline* bulged() {
        auto* const polyline = new AcDbPolyline;
        const double bulges[] = {0.4, 0.0, -1.3, 0.0, 2e-10};
        const AcGePoint2d points[] = {{0, 0}, {10, 2}, {12, 9}, {3, 11}, {3, 11}};
        for (unsigned i = 0; i < std::size(points); ++i)
            polyline->addVertexAt(i, points[i], bulges[i]);
        polyline->setClosed(true);
        polyline->setElevation(4.0);
        polyline->setThickness(2.0);
        polyline->setNormal({0.2, -0.5, -0.7});
        polyline->setLayer(db.layerZero());
        polyline->setColorIndex(3);
        return polyline;
    }
};

TEST_F(Explode, LightPolylinesBecomeLinesAndArcs) {
    const std::unique_ptr<AcDbPolyline> whole(bulged());
    const Parts parts = partsOf(*whole);
    ASSERT_EQ(parts.size(), 4U) << "the segment without length is left out";
    EXPECT_EQ(count<AcDbArc>(parts), 2U) << "one is flatter than can be told";
    expectSameCurve(*whole, parts);
    const auto* const arc = AcDbArc::cast(parts[2].get());
    EXPECT_EQ(arc->thickness(), 2.0);
    AcGePoint3d corner, end;
    ASSERT_EQ(whole->getPointAt(2, corner), Acad::eOk);
    ASSERT_EQ(arc->getEndPoint(end), Acad::eOk);
    enttest::expectNear(end, corner, 1e-9); // It ran clockwise: its end is the segment's start.
}

TEST_F(Explode, OldPolylinesLeaveTheirFrameOut) {
    AcGePoint3dArray vertices;
    AcGeDoubleArray bulges;
    for (const AcGePoint3d& p : {AcGePoint3d(0, 0, 0), AcGePoint3d(4, 0, 0), AcGePoint3d(4, 3, 0)})
        vertices.append(p);
    for (const double bulge : {1.0, 0.0, -0.5})
        bulges.append(bulge);
    AcDb2dPolyline flat(AcDb::k2dSimplePoly, vertices, 7.0, true, 0, 0, &bulges);
    const auto frame = enttest::read<AcDb2dVertex>(db, "10=99,99|70=16");
    flat.appendVertex(AcDb2dVertex::cast(frame->clone()));
    const Parts parts = partsOf(flat);
    EXPECT_EQ(count<AcDbArc>(parts), 2U);
    EXPECT_EQ(parts.size(), 3U);
    expectSameCurve(flat, parts);

    AcDb3dPolyline space(AcDb::k3dSimplePoly, vertices, true);
    const Parts lines = partsOf(space);
    EXPECT_EQ(count<AcDbLine>(lines), 3U);
    expectSameCurve(space, lines);
}

TEST_F(Explode, ReferencesGiveTheirContentsInPlace) {
    const AcDbObjectId inner = block(L"INNER");
    put(inner, new AcDbLine({1, 1, 0}, {2, 5, 0}));
    const AcDbObjectId outer = block(L"OUTER");
    put(outer, new AcDbCircle({3, 1, 0}, AcGeVector3d::kZAxis, 2.0));
    put(outer, new AcDbArc({0, 0, 0}, 3.0, 0.3, 2.0));
    put(outer, bulged());
    put(outer, new AcDbBlockReference({5, 5, 0}, inner));
    put(outer, new AcDbAttributeDefinition({0, 0, 0}, L"value", L"TAG", L"Prompt"));
    struct Case {
        const char* name;
        AcGeScale3d scale;
        std::size_t ellipses, arcs;
    };
    for (const Case& c : {Case{"even", {2, 2, 2}, 0, 3}, Case{"mirrored", {-2, 2, 2}, 0, 3},
                          Case{"uneven", {3, -1, 1}, 4, 0}}) {
        SCOPED_TRACE(c.name);
        AcDbBlockReference whole({100, 50, 0}, outer);
        whole.setScaleFactors(c.scale);
        auto* const attribute = new AcDbAttribute;
        attribute->setTextString(L"gone");
        whole.appendAttribute(attribute);
        Parts parts = partsOf(whole);
        EXPECT_EQ(count<AcDbEllipse>(parts), c.ellipses);
        EXPECT_EQ(count<AcDbBlockReference>(parts), 1U) << "one level only";
        EXPECT_EQ(count<AcDbAttributeDefinition>(parts), 1U);
        EXPECT_EQ(count<AcDbAttribute>(parts), 0U);
        std::erase_if(parts, [](const auto& part) { return AcDbText::cast(part.get()); });
        AcDbExtents box;
        ASSERT_EQ(headless::contentExtents(whole, headless::BoxOf::lines, box), Acad::eOk);
        enttest::expectNear(boxOfAll(parts), {box.minPoint(), box.maxPoint()}, 1e-8);
    }
    // Turned within an uneven scale the nested reference would be skewed.
    AcDbObjectPointer<AcDbBlockReference>(
        put(outer, new AcDbBlockReference({0, 0, 0}, inner))->objectId(), AcDb::kForWrite)
        ->setRotation(0.5);
    AcDbBlockReference skewed({0, 0, 0}, outer);
    skewed.setScaleFactors({3, 1, 1});
    AcDbVoidPtrArray none;
    EXPECT_EQ(skewed.explode(none), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(none.length(), 0);
}

TEST_F(Explode, ArraysAndRecursionEnd) {
    const AcDbObjectId self = block(L"SELF");
    put(self, new AcDbLine({0, 0, 0}, {1, 0, 0}));
    put(self, new AcDbBlockReference({2, 0, 0}, self));
    AcDbMInsertBlock grid({10, 10, 0}, self, 3, 2, 20.0, 5.0);
    EXPECT_EQ(count<AcDbLine>(partsOf(grid)), 6U);
    AcDbMInsertBlock vast({0, 0, 0}, self, 32767, 32767, 1.0, 1.0);
    AcDbVoidPtrArray none;
    EXPECT_EQ(vast.explode(none), Acad::eCannotExplodeEntity);
    AcDbObjectPointer<AcDbBlockTableRecord>(self, AcDb::kForWrite)->setExplodable(false);
    EXPECT_EQ(grid.explode(none), Acad::eCannotExplodeEntity);
}

TEST_F(Explode, DimensionsGiveTheirPicture) {
    const AcDbObjectId picture = block(L"PICTURE");
    put(picture, new AcDbLine({0, 0, 0}, {5, 0, 0}));
    const AcDbObjectId inside = block(L"INSIDE");
    auto* const dimension = new AcDbRotatedDimension;
    dimension->setDimBlockId(picture);
    put(inside, dimension);
    EXPECT_EQ(count<AcDbLine>(partsOf(*AcDbObjectPointer<AcDbEntity>(dimension->objectId()))), 1U);
    AcDbBlockReference turned({0, 0, 0}, inside);
    turned.setRotation(pi / 2);
    Parts parts = partsOf(turned);
    ASSERT_EQ(count<AcDbRotatedDimension>(parts), 1U);
    enttest::expectNear(boxOfAll(parts), {{0, 0, 0}, {0, 5, 0}});
    // A dimension cannot be stretched, its picture can.
    turned.setScaleFactors({2, 1, 1});
    parts = partsOf(turned);
    ASSERT_EQ(count<AcDbLine>(parts), 1U);
    enttest::expectNear(boxOfAll(parts), {{0, 0, 0}, {0, 10, 0}});
}

TEST_F(Explode, MultilineTextGivesItsPieces) {
    AcDbMText whole;
    whole.setTextHeight(2.5);
    whole.setLocation({10, 20, 0});
    whole.setNormal({0, 0, -1});
    whole.setRotation(0.5);
    whole.setContents(L"plain {\\H5;\\W0.5;tall}\\P\\S1/2; {\\C1;red}");
    const Parts parts = partsOf(whole);
    std::wstring texts;
    for (const auto& part : parts) {
        const auto* const text = AcDbText::cast(part.get());
        ASSERT_NE(text, nullptr);
        texts += text->textStringConst() + std::wstring(L"|");
        EXPECT_NEAR(text->rotation(), 0.5, 1e-12);
        if (text->textStringConst() == std::wstring(L"tall")) {
            EXPECT_EQ(text->height(), 5.0);
            EXPECT_EQ(text->widthFactor(), 0.5);
        }
    }
    EXPECT_EQ(texts, L"plain |tall|1/2|red|");
    EXPECT_EQ(parts.back()->colorIndex(), 1);
    const auto* const first = AcDbText::cast(parts.front().get());
    const auto* const third = AcDbText::cast(parts[2].get());
    const AcGeVector3d down = third->position() - first->position();
    EXPECT_GT(down.dotProduct(whole.direction().crossProduct(whole.normal())), 2.5)
        << "the second line is below the first";
}

TEST_F(Explode, PiecesOfMultilineTextLookAsTheirRunsDid) {
    const auto style = [&](const ACHAR* name, const ACHAR* file, const ACHAR* typeface, bool bold) {
        const auto id = coretest::addRecord<AcDbTextStyleTableRecord>(db.textStyleTableId(), name);
        AcDbObjectPointer<AcDbTextStyleTableRecord> record(id, AcDb::kForWrite);
        if (*file != L'\0') record->setFileName(file);
        if (*typeface != L'\0') record->setFont(typeface, bold, false, 0, 0);
        return id;
    };
    const AcDbObjectId own = style(L"OWN", L"txt.shx", L"", false);
    const AcDbObjectId strokes = style(L"STROKES", L"Romans.SHX", L"", false);
    const AcDbObjectId family = style(L"FAMILY", L"", L"Arial", false);
    const AcDbObjectId bold = style(L"BOLD", L"", L"Arial", true);
    const struct {
        const ACHAR *contents, *text;
        AcDbObjectId style;
        double width = 1.0, oblique = 0.0;
    } cases[] = {
        {L"plain", L"plain", own},
        {L"{\\Fromans|c134;x}", L"x", strokes},
        {L"{\\FTxt.shx,bigfont;x}", L"x", own},
        {L"{\\farial|b0|i0;x}", L"x", family},
        {L"{\\fArial|b1|i0;x}", L"x", bold},
        {L"{\\fArial|b1|i1;x}", L"x", own},
        {L"{\\T1.5;\\W2;x}", L"x", own, 3.0},
        {L"{\\Q30;x}", L"x", own, 1.0, pi / 6},
        {L"{\\Lx}", L"%%ux", own},
        {L"{\\L\\O\\Kx\\l}", L"%%u%%o%%kx", own},
        {L"{\\K\\S1/2;}", L"%%k1/2", own},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(headless::toUtf8(c.contents));
        AcDbMText whole;
        whole.setTextHeight(2.5);
        whole.setTextStyle(own);
        whole.setContents(c.contents);
        const Parts parts = partsOf(whole);
        ASSERT_EQ(parts.size(), 1U);
        const auto* const text = AcDbText::cast(parts.front().get());
        EXPECT_STREQ(text->textStringConst(), c.text);
        EXPECT_EQ(text->textStyle(), c.style);
        EXPECT_NEAR(text->widthFactor(), c.width, 1e-12);
        EXPECT_NEAR(text->oblique(), c.oblique, 1e-12);
        AcDbExtents box;
        const bool inOneLine = std::wstring(c.text).find(L'/') == std::wstring::npos;
        if (inOneLine && c.oblique == 0.0 && c.style == own) {
            ASSERT_EQ(text->getGeomExtents(box), Acad::eOk);
            EXPECT_NEAR(box.maxPoint().x, whole.actualWidth(), 1e-9);
        }
    }
}

TEST_F(Explode, MultilinesGiveTheirLinesAndBreaks) {
    // Two lines 10 apart around a corner; the upper one breaks between 30 and 40.
    const auto whole = enttest::read<AcDbMline>(
        db, "100=AcDbMline|11=0,0|12=1,0|13=0,1|74=4|41=5|41=0|41=30|41=40|74=2|41=-5|"
            "41=0|11=100,0|12=0,1|13=-1,1|74=2|41=5|41=0|74=2|41=-5|41=0|11=100,50|"
            "12=0,1|13=-1,0|74=2|41=5|41=0|74=2|41=-5|41=0");
    const Parts parts = partsOf(*whole);
    const std::pair<AcGePoint3d, AcGePoint3d> wanted[] = {{{0, 5, 0}, {30, 5, 0}},
                                                          {{40, 5, 0}, {95, 5, 0}},
                                                          {{95, 5, 0}, {95, 50, 0}},
                                                          {{0, -5, 0}, {105, -5, 0}},
                                                          {{105, -5, 0}, {105, 50, 0}}};
    ASSERT_EQ(parts.size(), std::size(wanted));
    for (std::size_t i = 0; i < parts.size(); ++i) {
        enttest::expectNear(AcDbLine::cast(parts[i].get())->startPoint(), wanted[i].first, 1e-12);
        enttest::expectNear(AcDbLine::cast(parts[i].get())->endPoint(), wanted[i].second, 1e-12);
    }
}

TEST_F(Explode, MeshesGiveTheirFaces) {
    AcGePoint3dArray net;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 4; ++j)
            net.append({1.0 * i, 2.0 * j, 1.0 * i * j});
    AcDbPolygonMesh open(AcDb::kSimpleMesh, 3, 4, net, false, false);
    EXPECT_EQ(count<AcDbFace>(partsOf(open)), 6U);
    enttest::expectNear(boxOfAll(partsOf(open)), boxOf(open));
    AcDbPolygonMesh closed(AcDb::kSimpleMesh, 3, 4, net, true, true);
    EXPECT_EQ(count<AcDbFace>(partsOf(closed)), 12U);

    AcDbPolyFaceMesh mesh;
    for (const AcGePoint3d& p : {AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), AcGePoint3d(0, 1, 2)})
        mesh.appendVertex(new AcDbPolyFaceMeshVertex(p));
    mesh.appendFaceRecord(new AcDbFaceRecord(1, -2, 3, 0));
    mesh.appendFaceRecord(new AcDbFaceRecord(1, 2, 9, 0)); // A corner that is not there.
    const Parts faces = partsOf(mesh);
    ASSERT_EQ(faces.size(), 2U);
    EXPECT_EQ(count<AcDbLine>(faces), 1U) << "what is left of two corners";
    Adesk::Boolean visible = true;
    AcDbFace::cast(faces[0].get())->isEdgeVisibleAt(1, visible);
    EXPECT_FALSE(visible);
}

TEST_F(Explode, WhatHasNoPartsRefuses) {
    AcDbVoidPtrArray none;
    EXPECT_EQ(AcDbLine().explode(none), Acad::eCannotExplodeEntity);
    EXPECT_EQ(headless::OpaqueEntity("3DSOLID").explode(none), Acad::eCannotExplodeEntity);
    EXPECT_EQ(AcDbPolyline().explode(none), Acad::eDegenerateGeometry);
    EXPECT_EQ(AcDbBlockReference().explode(none), Acad::eNullObjectId);
}

TEST_F(Explode, ToTheOwnersSpace) {
    const AcDbObjectId blockId = block(L"B");
    put(blockId, new AcDbLine({0, 0, 0}, {1, 0, 0}));
    EXPECT_EQ(AcDbBlockReference({7, 0, 0}, blockId).explodeToOwnerSpace(), Acad::eNotInDatabase);
    auto* const reference = put(db.modelSpaceId(), new AcDbBlockReference({7, 0, 0}, blockId));
    EXPECT_EQ(AcDbObjectPointer<AcDbBlockReference>(reference->objectId())->explodeToOwnerSpace(),
              Acad::eOk);
    const AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId());
    ASSERT_EQ(space->entityIds().size(), 2U);
    EXPECT_EQ(AcDbObjectPointer<AcDbLine>(space->entityIds()[1])->startPoint().x, 7.0);
}

} // namespace
