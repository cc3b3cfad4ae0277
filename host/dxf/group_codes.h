// What kind of value each group code of a drawing file announces.
#pragma once

#include <cstdint>

namespace headless {

enum class DxfValue : std::uint8_t {
    kNone, // no group has this code
    kText,
    kReal,
    kInt16,
    kInt32,
    kInt64,
    kBool,
    kChunk // bytes: hexadecimal digits in ASCII files
};

constexpr int kFirstGroupCode = -5;
constexpr int kLastGroupCode = 1071;
constexpr int kCommentCode = 999;
constexpr int kFirstXdataCode = 1000;

/// The kind of value behind a group code; kNone for codes that do not exist.
[[nodiscard]] DxfValue valueOfGroup(int code) noexcept;

} // namespace headless
