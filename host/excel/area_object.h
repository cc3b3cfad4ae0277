// Base of the objects that stand for cells of a sheet: ranges, and what they look like.
#pragma once

#include "excel/area_format.h"
#include "excel/objects.h"

namespace headless::excel {

class AreaObject : public ExcelObject {
public:
    AreaObject(const SheetPlace& place, const Area& area) : place_(place), area_(area) {}

protected:
    /// What all cells' formats agree on, as `read(format)` tells it; null when they differ.
    template <class Read>
    OwnedVariant common(Read read) const {
        place_.check();
        const auto value = commonFormat(place_, area_, read);
        return value ? OwnedVariant(*value) : OwnedVariant::null();
    }
    /// @param known  as FormatTable::changed() takes it.
    template <class Change>
    void change(Change change, const FormatChange& known = {}) const {
        place_.check();
        changeFormat(place_, area_, change, known);
    }

    SheetPlace place_;
    Area area_;
};

} // namespace headless::excel
