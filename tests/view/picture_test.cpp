// Pictures, by looking at their pixels.
#include <algorithm>
#include <cmath>
#include <memory>
#include <set>

#include <dbents.h>
#include <dbhatch.h>
#include <dbmtext.h>
#include <dbpl.h>
#include <dbsolid.h>

#include "db/resbuf.h"
#include "db/sortents_table.h"
#include "db/viewport.h"
#include "pixels.h"
#include "support/session_fixture.h"
#include "view/picture.h"

namespace {

using test_support::Pixels;

using headless::PictureFormat;
using headless::PictureOptions;

class PictureTest : public test_support::SessionTest {
protected:
    Pixels draw() {
        PictureOptions options;
        options.width = 100;
        options.height = 100;
        options.window = {0, 0, 100, 100};
        png_ = std::get<std::string>(headless::drawPicture(*database(), options));
        return Pixels(png_);
    }

    AcDbObjectId addLayer(const wchar_t* name, int color, bool off = false, bool frozen = false) {
        auto record = std::make_unique<AcDbLayerTableRecord>();
        record->setName(name);
        AcCmColor layerColor;
        layerColor.setColorIndex(color);
        record->setColor(layerColor);
        record->setIsOff(off);
        record->setIsFrozen(frozen);
        AcDbLayerTable* table = nullptr;
        EXPECT_EQ(database()->getLayerTable(table, AcDb::kForWrite), Acad::eOk);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record.get()), Acad::eOk);
        record.release()->close();
        table->close();
        return id;
    }

    AcDbObjectId addBlock(const wchar_t* name) {
        AcDbBlockTable* table = nullptr;
        EXPECT_EQ(database()->getBlockTable(table, AcDb::kForWrite), Acad::eOk);
        auto record = std::make_unique<AcDbBlockTableRecord>();
        record->setName(name);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record.get()), Acad::eOk);
        record.release()->close();
        table->close();
        return id;
    }

    /// A filled square of 10 units with its lower left corner there.
    static std::unique_ptr<AcDbSolid> square(double x, double y, int color = 256) {
        auto solid =
            std::make_unique<AcDbSolid>(AcGePoint3d(x, y, 0), AcGePoint3d(x + 10, y, 0),
                                        AcGePoint3d(x, y + 10, 0), AcGePoint3d(x + 10, y + 10, 0));
        solid->setColorIndex(static_cast<Adesk::UInt16>(color));
        return solid;
    }

    std::string png_;
};

constexpr unsigned kRed = 0xFF0000;
constexpr unsigned kGreen = 0x00FF00;
constexpr unsigned kBlue = 0x0000FF;
constexpr unsigned kBlack = 0;

TEST_F(PictureTest, ColoursComeThroughLayersAndReferences) {
    addLayer(L"red", 1);
    const AcDbObjectId block = addBlock(L"part");
    auto byLayer = square(0, 0);
    byLayer->setLayer(L"red");
    add(std::move(byLayer), L"part");
    add(square(20, 0, 0), L"part");   // by block
    add(square(40, 0, 256), L"part"); // by layer, on layer 0
    add(square(60, 0, 5), L"part");

    auto green = std::make_unique<AcDbBlockReference>(AcGePoint3d(10, 10, 0), block);
    green->setColorIndex(3);
    green->setLayer(L"red");
    add(std::move(green));
    add(std::make_unique<AcDbBlockReference>(AcGePoint3d(10, 50, 0), block));

    const Pixels picture = draw();
    EXPECT_EQ(picture.at(15, 15), kRed) << "the part's own layer";
    EXPECT_EQ(picture.at(35, 15), kGreen) << "by block takes the reference's colour";
    EXPECT_EQ(picture.at(55, 15), kRed) << "layer 0 takes the reference's layer";
    EXPECT_EQ(picture.at(75, 15), kBlue) << "its own colour";
    EXPECT_EQ(picture.at(15, 55), kRed);
    EXPECT_EQ(picture.at(35, 55), kBlack) << "the foreground is black on paper";
    EXPECT_EQ(picture.at(55, 55), kBlack);
    EXPECT_TRUE(picture.isWhite(5, 5));
}

TEST_F(PictureTest, ShowsAllOfMoreThanCanBeDrawn) {
    // 10^12 squares of a hundredth of a pixel and less, in tens of tens: they fill the diagonal.
    addLayer(L"red", 1);
    AcDbObjectId inner = addBlock(L"B0");
    auto leaf = square(0, 0);
    leaf->setLayer(L"red");
    add(std::move(leaf), L"B0");
    double pitch = 10.0;
    for (int level = 1; level <= 12; ++level, pitch *= 10.0) {
        const std::wstring name = L"B" + std::to_wstring(level);
        const AcDbObjectId block = addBlock(name.c_str());
        for (int i = 0; i < 10; ++i)
            add(std::make_unique<AcDbBlockReference>(AcGePoint3d(pitch * i, pitch * i, 0), inner),
                name.c_str());
        inner = block;
    }
    auto whole = std::make_unique<AcDbBlockReference>(AcGePoint3d::kOrigin, inner);
    whole->setScaleFactors(AcGeScale3d(100.0 / pitch));
    add(std::move(whole));
    // Ten thousand million at one place.
    const AcDbObjectId heap = addBlock(L"heap");
    AcDbObjectId part = heap;
    add(square(0, 0, 5), L"heap");
    for (int level = 1; level <= 10; ++level) {
        const std::wstring name = L"heap" + std::to_wstring(level);
        const AcDbObjectId block = addBlock(name.c_str());
        for (int i = 0; i < 10; ++i)
            add(std::make_unique<AcDbBlockReference>(AcGePoint3d::kOrigin, part), name.c_str());
        part = block;
    }
    add(std::make_unique<AcDbBlockReference>(AcGePoint3d(70, 10, 0), part));

    // A ball of as many that all stand otherwise.
    AcDbObjectId wound = addBlock(L"ball0");
    add(square(0, 0, 3), L"ball0");
    for (int level = 1; level <= 12; ++level) {
        const std::wstring name = L"ball" + std::to_wstring(level);
        const AcDbObjectId block = addBlock(name.c_str());
        for (int i = 0; i < 10; ++i) {
            auto turned = std::make_unique<AcDbBlockReference>(
                AcGePoint3d(std::cos(i), std::sin(i), 0), wound);
            turned->setRotation(0.61 * i * level);
            add(std::move(turned), name.c_str());
        }
        wound = block;
    }
    add(std::make_unique<AcDbBlockReference>(AcGePoint3d(25, 70, 0), wound));

    const Pixels picture = draw();
    for (int i = 1; i < 99; ++i)
        EXPECT_FALSE(picture.isWhite(i, i)) << i;
    EXPECT_LT(picture.marked(50, 0, 100, 100), 300);
    EXPECT_EQ(picture.at(25, 70), kGreen);
    EXPECT_GT(picture.marked(15, 60, 35, 80), 300);
    EXPECT_EQ(picture.at(75, 15), kBlue);
    EXPECT_EQ(picture.marked(65, 5, 85, 25), 100);
}

TEST_F(PictureTest, LongOutlinesAreWhole) {
    // Three sides of a square in 1200 steps; the fourth closes it.
    auto outline = std::make_unique<AcDbPolyline>();
    const AcGePoint2d corners[] = {{10, 10}, {90, 10}, {90, 90}, {10, 90}};
    for (int i = 0; i <= 1200; ++i) {
        const int side = std::min(i / 400, 2);
        outline->addVertexAt(outline->numVerts(),
                             corners[side] +
                                 (corners[side + 1] - corners[side]) * ((i - 400 * side) / 400.0));
    }
    outline->setClosed(Adesk::kTrue);
    add(std::move(outline));
    const Pixels picture = draw();
    for (int at = 9; at <= 90; ++at) {
        EXPECT_GT(picture.marked(at, 9, at + 1, 11), 0) << "bottom " << at;
        EXPECT_GT(picture.marked(89, at, 91, at + 1), 0) << "right " << at;
        EXPECT_GT(picture.marked(9, at, 11, at + 1), 0) << "closing " << at;
    }
    EXPECT_EQ(picture.marked(12, 12, 88, 88), 0);
}

TEST_F(PictureTest, LeavesOutWhatDoesNotShow) {
    addLayer(L"off", 1, true, false);
    addLayer(L"frozen", 1, false, true);
    addLayer(L"on", 1);
    const AcDbObjectId block = addBlock(L"part");
    auto own = square(0, 0);
    own->setLayer(L"on");
    add(std::move(own), L"part");
    add(square(20, 0), L"part"); // on layer 0

    const auto addOn = [&](const wchar_t* layer, double y) {
        auto reference = std::make_unique<AcDbBlockReference>(AcGePoint3d(10, y, 0), block);
        reference->setLayer(layer);
        add(std::move(reference));
        auto plain = square(60, y);
        plain->setLayer(layer);
        add(std::move(plain));
    };
    addOn(L"off", 10);
    addOn(L"frozen", 30);
    addOn(L"on", 50);
    auto invisible = square(10, 70);
    invisible->setVisibility(AcDb::kInvisible);
    add(std::move(invisible));

    const Pixels picture = draw();
    const struct {
        const char* name;
        int x, y;
        bool shows;
    } places[] = {
        {"own layer in a reference that is off", 15, 15, true},
        {"layer 0 in a reference that is off", 35, 15, false},
        {"on a layer that is off", 65, 15, false},
        {"own layer in a frozen reference", 15, 35, false},
        {"layer 0 in a frozen reference", 35, 35, false},
        {"on a frozen layer", 65, 35, false},
        {"own layer", 15, 55, true},
        {"layer 0 in a reference", 35, 55, true},
        {"invisible entity", 15, 75, false},
    };
    for (const auto& place : places)
        EXPECT_EQ(!picture.isWhite(place.x, place.y), place.shows) << place.name;
}

TEST_F(PictureTest, NestedReferencesAreTurnedMirroredAndRepeated) {
    const AcDbObjectId inner = addBlock(L"inner");
    add(square(0, 0), L"inner");
    const AcDbObjectId outer = addBlock(L"outer");
    auto mirrored = std::make_unique<AcDbBlockReference>(AcGePoint3d(0, 0, 0), inner);
    mirrored->setScaleFactors(AcGeScale3d(-1, 1, 1));
    add(std::move(mirrored), L"outer");
    auto turned = std::make_unique<AcDbBlockReference>(AcGePoint3d(50, 50, 0), outer);
    turned->setRotation(std::acos(0.0));
    add(std::move(turned));
    add(std::make_unique<AcDbMInsertBlock>(AcGePoint3d(10, 10, 0), inner, 3, 2, 20, 15));

    const Pixels picture = draw();
    // From (-10..0, 0..10) a quarter turn takes it to (-10..0, -10..0).
    EXPECT_EQ(picture.at(45, 45), kBlack);
    EXPECT_EQ(picture.marked(38, 38, 62, 62), 100);
    EXPECT_EQ(picture.marked(10, 10, 60, 35), 6 * 100);
}

TEST_F(PictureTest, LaterOnTopUnlessTheDrawOrderSaysOtherwise) {
    const AcDbObjectId first = add(square(10, 10, 1));
    add(square(15, 10, 3));
    EXPECT_EQ(draw().at(17, 15), kGreen);

    AcDbBlockTableRecord* space = nullptr;
    ASSERT_EQ(acdbOpenObject(space, database()->currentSpaceId(), AcDb::kForWrite), Acad::eOk);
    AcDbSortentsTable* order = nullptr;
    ASSERT_EQ(space->getSortentsTable(order, AcDb::kForWrite, true), Acad::eOk);
    AcDbObjectIdArray ids;
    ids.append(first);
    EXPECT_EQ(order->moveToTop(ids), Acad::eOk);
    order->close();
    space->close();
    EXPECT_EQ(draw().at(17, 15), kRed);
}

TEST_F(PictureTest, LinesAreAsWideAndAsBrokenAsTheyAsk) {
    const auto line = [](double y) {
        return std::make_unique<AcDbLine>(AcGePoint3d(0, y, 0), AcGePoint3d(100, y, 0));
    };
    auto wide = line(20);
    wide->setLineWeight(AcDb::kLnWt200); // 2 mm are 7.6 pixels at 96 to the inch
    add(std::move(wide));

    AcDbLinetypeTable* table = nullptr;
    ASSERT_EQ(database()->getLinetypeTable(table, AcDb::kForWrite), Acad::eOk);
    auto dashed = std::make_unique<AcDbLinetypeTableRecord>();
    dashed->setName(L"dashed");
    dashed->setNumDashes(2);
    dashed->setDashLengthAt(0, 5);
    dashed->setDashLengthAt(1, -5);
    dashed->setPatternLength(10);
    ASSERT_EQ(table->add(dashed.get()), Acad::eOk);
    dashed.release()->close();
    table->close();
    auto broken = line(50);
    EXPECT_EQ(broken->setLinetype(L"dashed"), Acad::eOk);
    add(std::move(broken));

    add(line(80));

    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->addVertexAt(0, AcGePoint2d(10, 90));
    polyline->addVertexAt(1, AcGePoint2d(90, 90));
    polyline->setConstantWidth(6);
    add(std::move(polyline));

    const Pixels picture = draw();
    EXPECT_NEAR(picture.marked(50, 10, 51, 30), 8, 1);
    // Each of the ten dashes reaches into pixels at both its ends.
    EXPECT_NEAR(picture.marked(0, 45, 100, 55), 60 * picture.marked(12, 45, 13, 55), 10);
    EXPECT_EQ(picture.marked(0, 75, 100, 79) + picture.marked(0, 82, 100, 85), 0);
    EXPECT_GE(picture.marked(0, 79, 100, 82), 100);
    EXPECT_EQ(picture.marked(50, 85, 51, 95), 6);

    const auto gaps = [this] {
        const Pixels now = draw();
        return 100 * now.marked(2, 79, 3, 82) - now.marked(0, 79, 100, 82);
    };
    EXPECT_EQ(gaps(), 0);
    const AcDbObjectId twin = add(line(80));
    AcDbEntity* highlighted = nullptr;
    ASSERT_EQ(acdbOpenObject(highlighted, twin, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(highlighted->highlight(), Acad::eOk);
    EXPECT_GT(gaps(), 20) << "dashes, with the solid line below out of sight";
    EXPECT_EQ(highlighted->unhighlight(), Acad::eOk);
    highlighted->close();
    EXPECT_EQ(gaps(), 0);
}

TEST_F(PictureTest, FillsAndLettersThatAreHighlightedAreStriped) {
    const AcGePoint3d low(20, 10, 0);
    const AcGePoint3d high(80, 40, 0);
    const AcDbObjectId solid = add(std::make_unique<AcDbSolid>(
        low, AcGePoint3d(high.x, low.y, 0), AcGePoint3d(low.x, high.y, 0), high));
    const AcDbObjectId text =
        add(std::make_unique<AcDbText>(AcGePoint3d(20, 60, 0), L"板", AcDbObjectId::kNull, 30.0));

    const Pixels plain = draw();
    for (const AcDbObjectId id : {solid, text}) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        EXPECT_EQ(entity->highlight(), Acad::eOk);
    }
    const Pixels striped = draw();
    for (const int bottom : {10, 50}) {
        const int whole = plain.marked(20, bottom, 80, bottom + 40);
        const int left = striped.marked(20, bottom, 80, bottom + 40);
        EXPECT_LT(left, whole * 9 / 10) << bottom;
        EXPECT_GT(left, whole / 2) << bottom;
    }
    for (const AcDbObjectId id : {solid, text}) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        EXPECT_EQ(entity->unhighlight(), Acad::eOk);
    }
}

TEST_F(PictureTest, CurvesKeepTheirShape) {
    add(std::make_unique<AcDbCircle>(AcGePoint3d(50, 50, 0), AcGeVector3d::kZAxis, 40.0));
    addPolyline({{{10, 10}, 1.0}, {{30, 10}, 1.0}});
    const Pixels picture = draw();
    for (int degrees = 0; degrees < 360; degrees += 15) {
        const double angle = degrees * std::acos(-1.0) / 180.0;
        const auto x = static_cast<int>(50 + 40 * std::cos(angle));
        const auto y = static_cast<int>(50 + 40 * std::sin(angle));
        EXPECT_GT(picture.marked(x - 1, y - 1, x + 2, y + 2), 0) << degrees << " degrees";
    }
    EXPECT_EQ(picture.marked(25, 45, 75, 75), 0) << "the circle is not filled";
    EXPECT_GT(picture.marked(19, 0, 21, 2), 0) << "the lower half circle's lowest point";
    EXPECT_EQ(picture.marked(15, 5, 25, 15), 0);
}

TEST_F(PictureTest, TextsFillTheirBoxes) {
    auto text = std::make_unique<AcDbText>(AcGePoint3d(10, 60, 0), L"HHHH", AcDbObjectId(), 10.0);
    AcDbExtents box;
    ASSERT_EQ(text->getGeomExtents(box), Acad::eOk);
    const auto right = static_cast<int>(std::ceil(box.maxPoint().x));
    add(std::move(text));
    auto paragraph = std::make_unique<AcDbMText>();
    paragraph->setContents(L"{\\C1;\u677F}\u677F");
    paragraph->setTextHeight(10.0);
    paragraph->setLocation({10, 40, 0});
    add(std::move(paragraph));

    const Pixels picture = draw();
    EXPECT_GT(picture.marked(10, 60, right, 70), 40);
    EXPECT_GT(picture.marked(right - 8, 60, right, 70), 8) << "the last letter";
    EXPECT_EQ(picture.marked(0, 50, 100, 60) + picture.marked(0, 71, 100, 100) +
                  picture.marked(right + 1, 60, 100, 70),
              0);
    bool red = false;
    for (int x = 10; x < 24; ++x)
        for (int y = 28; y < 41; ++y)
            red = red || (picture.at(x, y) >> 16) > (picture.at(x, y) & 0xFF) + 80;
    EXPECT_TRUE(red) << "the first letter's own colour";
}

TEST_F(PictureTest, ChoosesItsWindowAndRefusesWhatCannotBe) {
    PictureOptions options;
    const auto reasonOf = [&] {
        const auto picture = headless::drawPicture(*database(), options);
        const auto* const failure = std::get_if<headless::PictureFailure>(&picture);
        return failure == nullptr ? std::string() : failure->reason;
    };
    EXPECT_EQ(reasonOf(), "nothing is visible in the drawing");

    // Fitted with a margin of 3%, the square fills all but that of the picture's height.
    add(square(1e6, 1e6));
    options.width = 200;
    options.height = 106;
    const auto fitted = headless::drawPicture(*database(), options);
    const Pixels picture(std::get<std::string>(fitted));
    EXPECT_EQ(picture.marked(0, 0, 200, 106), 100 * 100);

    options.window = {5, 5, 5, 9};
    EXPECT_EQ(reasonOf(), "the window has no area");
    options.window = {0, 0, 1, 1};
    options.width = 1e9;
    EXPECT_EQ(reasonOf(), "the picture's size is out of range");
}

TEST_F(PictureTest, SheetsShowTheModelThroughTheirViewports) {
    addLayer(L"hidden", 1);
    add(square(1000, 1000, 3));
    auto hidden = square(1020, 1000);
    EXPECT_EQ(hidden->setLayer(L"hidden"), Acad::eOk);
    const AcDbObjectId cold = hidden->layerId();
    add(std::move(hidden));
    add(square(1100, 1000, 5)); // beside what the viewport sees
    auto viewport = std::make_unique<AcDbViewport>();
    viewport->setCenterPoint({50, 50, 0});
    viewport->setWidth(80);
    viewport->setHeight(40);
    viewport->setViewCenter({1020, 1010});
    viewport->setViewHeight(20);
    AcDbObjectIdArray frozen;
    frozen.append(cold);
    EXPECT_EQ(viewport->freezeLayersInViewport(frozen), Acad::eOk);
    add(std::move(viewport), ACDB_PAPER_SPACE);
    add(square(0, 0, 1), ACDB_PAPER_SPACE);

    PictureOptions options;
    options.width = 100;
    options.height = 100;
    options.window = {0, 0, 100, 100};
    options.layout = L"LAYOUT1";
    const auto png = std::get<std::string>(headless::drawPicture(*database(), options));
    const Pixels picture(png);
    EXPECT_EQ(picture.at(20, 40), kGreen) << "twice as large";
    EXPECT_EQ(picture.at(5, 5), kRed) << "on the sheet itself";
    EXPECT_EQ(picture.marked(35, 35, 85, 65), 0) << "frozen in the viewport";
    EXPECT_EQ(picture.marked(91, 20, 100, 80), 0) << "the viewport ends there";
    EXPECT_GT(picture.marked(89, 40, 91, 45), 0) << "its border";
    options.layout = L"none";
    const auto none = headless::drawPicture(*database(), options);
    EXPECT_TRUE(std::holds_alternative<headless::PictureFailure>(none));
}

TEST_F(PictureTest, KeepsVectorFormats) {
    add(square(0, 0));
    PictureOptions options;
    options.format = *headless::pictureFormatOf("plan.SVG");
    const auto svg = std::get<std::string>(headless::drawPicture(*database(), options));
    EXPECT_TRUE(svg.starts_with("<?xml"));
    EXPECT_NE(svg.find("</svg>"), std::string::npos);
    options.format = *headless::pictureFormatOf("plan.pdf");
    const auto pdf = std::get<std::string>(headless::drawPicture(*database(), options));
    EXPECT_TRUE(pdf.starts_with("%PDF"));
    EXPECT_NE(pdf.rfind("%%EOF"), std::string::npos);
    EXPECT_FALSE(headless::pictureFormatOf("plan.jpg"));
}

} // namespace
