// Tables drawn in a drawing of a test's own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <dbents.h>

#include "support/session_fixture.h"
#include "table/grid_to_cad_table.h"
#include "table/plain_table.h"

namespace test_support {

template <class T>
std::vector<T> listOf(const CArray<T, T>& array) {
    return {array.GetData(), array.GetData() + array.GetSize()};
}

class TableTest : public SessionTest {
protected:
    void drawLine(const AcGePoint3d& start, const AcGePoint3d& end) {
        drawn_.append(add(std::make_unique<AcDbLine>(start, end)));
    }
    void drawText(const plain::Text& text) {
        auto entity = std::make_unique<AcDbText>(text.position, text.text, AcDbObjectId::kNull,
                                                 text.height, text.rotation);
        entity->setWidthFactor(text.widthFactor);
        entity->setColorIndex(static_cast<Adesk::UInt16>(text.color));
        drawn_.append(add(std::move(entity)));
    }
    /// Lines at all of these coordinates, each from the first to the last.
    void drawRuling(const std::vector<double>& x, const std::vector<double>& y) {
        for (const double level : y)
            drawLine({x.front(), level, 0}, {x.back(), level, 0});
        for (const double level : x)
            drawLine({level, y.front(), 0}, {level, y.back(), 0});
    }

    AcArray<AcDbObjectId> drawn_; // in order
};

} // namespace test_support
