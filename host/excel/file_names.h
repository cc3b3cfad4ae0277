// Names that workbook files have for kinds of things.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace headless::excel {

/// The value that stands at the place of its name in the list.
template <class Value, std::size_t Count>
Value named(std::string_view name, const std::array<std::string_view, Count>& names,
            Value fallback) {
    const auto found = std::ranges::find(names, name);
    return found == names.end() ? fallback : static_cast<Value>(found - names.begin());
}

/// What a sheet forbids, in the order of Forbidden. Files say so of what is usually allowed, and
/// else what is allowed.
inline constexpr std::array<std::string_view, 15> kForbidden = {
    "objects",           "scenarios",  "formatCells",      "formatColumns", "formatRows",
    "insertColumns",     "insertRows", "insertHyperlinks", "deleteColumns", "deleteRows",
    "selectLockedCells", "sort",       "autoFilter",       "pivotTables",   "selectUnlockedCells"};

} // namespace headless::excel
