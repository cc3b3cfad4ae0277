// Values of applications' own data, as the database keeps them: each a group code and a value of
// the kind that the code stands for. Result buffers and groups of files are made from them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "db/dxf_filer.h"
#include "db/object_id.h"
#include "ge/point3d.h"

struct resbuf;

namespace headless {

struct DataItem {
    using Bytes = std::vector<char>;
    /// By valueKind(code): handles are texts, codes for which that answers kName hold ids.
    using Value = std::variant<double, AcGePoint3d, std::int16_t, std::int32_t, std::int64_t,
                               std::wstring, AcDbObjectId, Bytes>;

    std::int16_t code = 0;
    Value value;

    /// The value's text; empty for values that are none.
    std::wstring_view text() const;
    friend bool operator==(const DataItem&, const DataItem&) = default;
};

using DataItems = std::vector<DataItem>;

/// The value of one buffer. Null for a type that is no group code, for a name that no object of a
/// living database has, and for a missing text.
[[nodiscard]] std::optional<DataItem> itemOf(const resbuf& buffer);

/// A chain of buffers that the caller frees with acutRelRb; null for no items.
[[nodiscard]] resbuf* chainOf(std::span<const DataItem> items);

/// Fills one buffer with a copy of the value.
void setValue(resbuf& buffer, const DataItem& item);

/// Adds the values' groups to an object's, which refer to the items' texts.
void writeItems(std::span<const DataItem> items, DxfOutput& out);

/// The values of groups: a point is one item, though three groups of a file. Groups that hold
/// nothing are left out.
[[nodiscard]] DataItems itemsOf(std::span<const DxfTag> groups, AcDbDxfFiler& filer);

} // namespace headless
