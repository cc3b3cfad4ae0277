// The base of the tests about views: set one up, translate points, ask variables.
#pragma once

#include <cmath>
#include <numbers>
#include <optional>

#include "db/viewport.h"
#include "ed/coordinate_calls.h"
#include "ed/user_coordinates.h"
#include "ed/viewports.h"
#include "editor_fixture.h"

class ViewTest : public EditorTest {
protected:
    static constexpr double kPi = std::numbers::pi;

    static resbuf code(short value) {
        resbuf buffer{};
        buffer.restype = RTSHORT;
        buffer.resval.rint = value;
        return buffer;
    }

    /// The translated point, or nothing when it was refused.
    static std::optional<AcGePoint3d> translate(const AcGePoint3d& point, const resbuf& from,
                                                const resbuf& to, int displacement = 0) {
        const ads_point given = {point.x, point.y, point.z};
        ads_point result;
        if (acedTrans(given, &from, &to, displacement, result) != RTNORM) return std::nullopt;
        return AcGePoint3d(result[0], result[1], result[2]);
    }
    static std::optional<AcGePoint3d> translate(const AcGePoint3d& point, short from, short to,
                                                int displacement = 0) {
        return translate(point, code(from), code(to), displacement);
    }

    static void expectNear(const std::optional<AcGePoint3d>& actual, const AcGePoint3d& wanted,
                           double tolerance = 1e-9) {
        ASSERT_TRUE(actual);
        EXPECT_NEAR(actual->x, wanted.x, tolerance);
        EXPECT_NEAR(actual->y, wanted.y, tolerance);
        EXPECT_NEAR(actual->z, wanted.z, tolerance);
    }

    AcGePoint3d pointOf(const wchar_t* variable) const { return ed_.variables.point(variable); }
    double realOf(const wchar_t* variable) const { return ed_.variables.real(variable); }
    int integerOf(const wchar_t* variable) const {
        return std::get<Adesk::Int16>(*ed_.variables.get(variable));
    }
    headless::SetOutcome set(const wchar_t* variable, int value) {
        return ed_.variables.set(variable, static_cast<Adesk::Int16>(value));
    }

    /// Shows the view whatever its proportions.
    void show(const headless::View& view) {
        ASSERT_EQ(headless::setCurrentView(drawing(), view), Acad::eOk);
    }

    void setUcs(const AcGePoint3d& origin, const AcGeVector3d& x, const AcGeVector3d& y) {
        AcGeMatrix3d matrix;
        matrix.setCoordSystem(origin, x, y, x.crossProduct(y));
        ASSERT_EQ(acedSetCurrentUCS(matrix), Acad::eOk);
    }

    template <class T>
    AcDbObjectId add(AcDbObjectId space, std::unique_ptr<T> entity) {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(space, AcDb::kForWrite);
        entity->setDatabaseDefaults(&drawing());
        AcDbObjectId id;
        EXPECT_EQ(block->appendAcDbEntity(id, entity.get()), Acad::eOk);
        entity.release()->close();
        return id;
    }

    /// A viewport on the sheet 60 wide and 40 high around 100,80, at scale 1 to 5, on 7,9.
    AcDbObjectId addFloating() {
        auto port = std::make_unique<AcDbViewport>();
        port->setCenterPoint({100, 80, 0});
        port->setWidth(60);
        port->setHeight(40);
        port->setViewCenter({7, 9});
        port->setViewHeight(200);
        return add(drawing().paperSpaceId(), std::move(port));
    }
};
