// Broken drawings that once made the program hang or fall over, found by throwing files at it.
#include <algorithm>
#include <chrono>

#include "db/curve.h"
#include "drawing_fixture.h"

namespace headless::testing {
namespace {

void measure(AcDbObjectId id) {
    const Opened<AcDbEntity> entity(id);
    if (!entity) return;
    AcDbExtents box;
    (void)entity->getGeomExtents(box);
    if (const auto* const curve = AcDbCurve::cast(&*entity)) {
        double value = 0.0;
        (void)curve->getArea(value);
        if (curve->getEndParam(value) == Acad::eOk) (void)curve->getDistAtParam(value, value);
    }
}

TEST(BrokenDrawings, AreReadAndMeasuredInNoTime) {
    struct Case {
        const char* name;
        std::string records; // lines written with bars between them
    };
    const Case cases[] = {
        {"spline whose area is nothing but rounding errors",
         "0|SPLINE|8|0|70|11|71|3|72|8|73|4|40|0|40|0|40|0|40|0|40|1|40|1|40|1|40|1|"
         "41|1.0|10|0|20|0|10|1|20|2.3|20|2|10|0.1|20|0|11|0|21|0|11|1.4|21|1"},
        {"spline along a straight line far away",
         "0|SPLINE|8|0|70|8|71|3|72|8|73|4|40|0|40|0|40|0|40|0|40|1|40|1|40|1|40|1|"
         "10|1000000.1|20|2000000.2|10|1000001.3|20|2000002.6|10|1000003.7|20|2000007.4|"
         "10|1000004.9|20|2000009.8"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string bytes = "0|SECTION|2|ENTITIES|" + c.records + "|0|ENDSEC|0|EOF|";
        const auto start = std::chrono::steady_clock::now();
        const Drawing drawing(lines(bytes));
        ASSERT_TRUE(drawing.result);
        for (const AcDbObjectId id : Residence::residents(*drawing.db))
            measure(id);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    }
}

} // namespace
} // namespace headless::testing
