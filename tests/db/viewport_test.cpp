#include "db/viewport.h"
#include "entity_support.h"

namespace {

using enttest::read;
using ViewportTest = coretest::CoreTest;

TEST_F(ViewportTest, SheetWindowAndItsView) {
    const auto port =
        read<AcDbViewport>(db, "10=100,80,0|40=60|41=40|69=3|12=7,9|16=1,-1,1|17=5,6,7|45=8|51=180|"
                               "90=32800");
    EXPECT_EQ(port->centerPoint(), AcGePoint3d(100, 80, 0));
    EXPECT_EQ(port->viewCenter(), AcGePoint2d(7, 9));
    EXPECT_EQ(port->viewDirection(), AcGeVector3d(1, -1, 1));
    EXPECT_EQ(port->viewTarget(), AcGePoint3d(5, 6, 7));
    EXPECT_EQ(port->customScale(), 5.0);
    EXPECT_FALSE(port->isPerspectiveOn());
    EXPECT_TRUE(port->isOn());
    enttest::expectNear(enttest::boxOf(*port), {{70, 60, 0}, {130, 100, 0}});
}

TEST_F(ViewportTest, OldFilesTellNoView) {
    const auto sheet = read<AcDbViewport>(db, "10=100,80|40=60|41=40|68=1|69=1");
    EXPECT_EQ(sheet->viewCenter(), AcGePoint2d(100, 80));
    EXPECT_EQ(sheet->viewHeight(), 40.0);
    AcDbExtents none;
    EXPECT_EQ(sheet->getGeomExtents(none), Acad::eNullExtents);
}

TEST_F(ViewportTest, FlagsSwitchItOff) {
    const auto port = read<AcDbViewport>(db, "40=6|41=4|90=131073");
    EXPECT_FALSE(port->isOn());
    EXPECT_TRUE(port->isPerspectiveOn());
    EXPECT_EQ(port->setCustomScale(0.0), Acad::eInvalidInput);
    EXPECT_EQ(port->setCustomScale(2.0), Acad::eOk);
    EXPECT_EQ(port->viewHeight(), 2.0);
}

} // namespace
