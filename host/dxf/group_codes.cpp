#include "dxf/group_codes.h"

#include <array>

namespace headless {
namespace {

struct Range {
    std::int16_t first;
    std::int16_t last;
    DxfValue value;
};

// Codes below zero stand in applications' lists only, never in a file with a value of their own,
// but careless programs write them as text.
constexpr Range kRanges[] = {
    {-5, 9, DxfValue::kText},       {10, 59, DxfValue::kReal},      {60, 79, DxfValue::kInt16},
    {90, 99, DxfValue::kInt32},     {100, 109, DxfValue::kText},    {110, 149, DxfValue::kReal},
    {160, 169, DxfValue::kInt64},   {170, 179, DxfValue::kInt16},   {210, 239, DxfValue::kReal},
    {270, 289, DxfValue::kInt16},   {290, 299, DxfValue::kBool},    {300, 309, DxfValue::kText},
    {310, 319, DxfValue::kChunk},   {320, 369, DxfValue::kText},    {370, 389, DxfValue::kInt16},
    {390, 399, DxfValue::kText},    {400, 409, DxfValue::kInt16},   {410, 419, DxfValue::kText},
    {420, 429, DxfValue::kInt32},   {430, 439, DxfValue::kText},    {440, 459, DxfValue::kInt32},
    {460, 469, DxfValue::kReal},    {470, 481, DxfValue::kText},    {999, 1003, DxfValue::kText},
    {1004, 1004, DxfValue::kChunk}, {1005, 1009, DxfValue::kText},  {1010, 1059, DxfValue::kReal},
    {1060, 1070, DxfValue::kInt16}, {1071, 1071, DxfValue::kInt32},
};

constexpr auto makeTable() {
    std::array<DxfValue, kLastGroupCode - kFirstGroupCode + 1> table{};
    for (const Range& range : kRanges) {
        for (int code = range.first; code <= range.last; ++code) {
            table[static_cast<std::size_t>(code - kFirstGroupCode)] = range.value;
        }
    }
    return table;
}

constexpr auto kTable = makeTable();

} // namespace

DxfValue valueOfGroup(int code) noexcept {
    if (code < kFirstGroupCode || code > kLastGroupCode) return DxfValue::kNone;
    return kTable[static_cast<std::size_t>(code - kFirstGroupCode)];
}

} // namespace headless
