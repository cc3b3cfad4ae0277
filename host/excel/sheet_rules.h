// What a sheet says of areas besides what they look like: links, rules for input, protection.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "excel/area.h"

namespace headless::excel {

/// Where a click on cells leads.
struct Link {
    Area area;
    std::string target;   ///< A file or an address; empty for a place in the workbook.
    std::string location; ///< "Sheet2!A1", in the target or in the workbook.
    std::string tip;      ///< Shown over the cells.

    bool operator==(const Link&) const = default;
};

enum class InputKind : std::uint8_t {
    kAny,
    kWhole,
    kDecimal,
    kList,
    kDate,
    kTime,
    kLength,
    kCustom
};
/// How the value compares with the rule's formulas; kBetween and kNotBetween have two.
enum class InputOperator : std::uint8_t {
    kBetween,
    kNotBetween,
    kEqual,
    kNotEqual,
    kGreater,
    kLess,
    kGreaterOrEqual,
    kLessOrEqual
};
enum class InputRefusal : std::uint8_t { kStop, kWarning, kInformation };

/// What may be typed into cells.
struct InputRule {
    Area area;
    InputKind kind = InputKind::kAny;
    InputOperator comparison = InputOperator::kBetween;
    std::string first; ///< Formulas without the equals sign; of a list also "\"a,b\"".
    std::string second;
    bool allowsBlank = false;
    bool showsList = true;
    bool showsPrompt = false;
    bool showsRefusal = false;
    InputRefusal refusal = InputRefusal::kStop;
    std::string promptTitle;
    std::string prompt;
    std::string refusalTitle;
    std::string refusalText;

    bool operator==(const InputRule&) const = default;
};

/// What a protected sheet forbids, in the order of their names in files.
enum class Forbidden : std::uint8_t {
    kObjects,
    kScenarios,
    kFormatCells,
    kFormatColumns,
    kFormatRows,
    kInsertColumns,
    kInsertRows,
    kInsertLinks,
    kDeleteColumns,
    kDeleteRows,
    kSelectLocked,
    kSort,
    kFilter,
    kPivotTables,
    kSelectUnlocked
};
struct Protection {
    std::array<bool, 15> forbids{};
    std::string password; ///< Its short hash of old, four digits; empty without one.

    bool operator==(const Protection&) const = default;
};

/// Complaints about cells that a program shows no more, in the order of the writing library.
constexpr std::size_t kComplaints = 9;
using QuietAreas = std::array<std::vector<Area>, kComplaints>;

} // namespace headless::excel
