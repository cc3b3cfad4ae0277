#include "db/data_item.h"

#include <algorithm>
#include <concepts>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "db/dxf_output.h"
#include "db/resbuf.h"

namespace headless {
namespace {

using Bytes = DataItem::Bytes;
using Value = DataItem::Value;

std::optional<Value> textValue(const ACHAR* text) {
    if (text == nullptr) return std::nullopt;
    return Value(std::wstring(text));
}

std::optional<Value> nameValue(const Adesk::IntDbId (&name)[2]) {
    AcDbObjectId id;
    if (!ads_name_nil(name) && acdbGetObjectId(id, name) != Acad::eOk) return std::nullopt;
    return Value(id);
}

std::optional<Value> chunkValue(const ads_binary& chunk) {
    if (chunk.clen < 0 || (chunk.clen > 0 && chunk.buf == nullptr)) return std::nullopt;
    return Value(Bytes(chunk.buf, chunk.buf + chunk.clen));
}

std::optional<Value> valueOf(const resbuf& buffer) {
    const ads_u_val& held = buffer.resval;
    switch (valueKind(buffer.restype)) {
    case ValueKind::kReal:
        return Value(held.rreal);
    case ValueKind::kPoint:
        return Value(AcGePoint3d(held.rpoint[0], held.rpoint[1], held.rpoint[2]));
    case ValueKind::kInt16:
        return Value(std::int16_t{held.rint});
    case ValueKind::kInt32:
        return Value(std::int32_t{held.rlong});
    case ValueKind::kInt64:
        return Value(std::int64_t{held.mnInt64});
    case ValueKind::kText:
    case ValueKind::kHandle:
        return textValue(held.rstring);
    case ValueKind::kName:
        return nameValue(held.rlname);
    case ValueKind::kBinary:
        return chunkValue(held.rbinary);
    case ValueKind::kNothing:
        break;
    }
    return std::nullopt;
}

int digitOf(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    return -1;
}

/// The bytes that pairs of digits stand for, up to the first that are none.
Bytes fromHexadecimal(std::string_view digits) {
    Bytes bytes;
    for (; digits.size() >= 2; digits.remove_prefix(2)) {
        const int high = digitOf(digits[0]);
        const int low = digitOf(digits[1]);
        if (high < 0 || low < 0) break;
        bytes.push_back(static_cast<char>(high * 16 + low));
    }
    return bytes;
}

Bytes chunkOf(const DxfTag& tag) {
    if (tag.kind == DxfTag::Kind::kBinary) return {tag.bytes, tag.bytes + tag.length};
    return fromHexadecimal(tag.text());
}

/// Names stand in files with blanks around them at times; texts mean their blanks.
bool isName(int code) {
    constexpr int kNames[] = {1001, 1002, 1003};
    return std::find(std::begin(kNames), std::end(kNames), code) != std::end(kNames) ||
           valueKind(code) == ValueKind::kHandle;
}

std::wstring textOf(const DxfTag& tag, const AcDbDxfFiler& filer) {
    if (!isName(tag.code) || tag.kind != DxfTag::Kind::kText) return filer.text(tag);
    DxfTag name = tag;
    const std::string_view text = tag.text();
    name.bytes = text.data();
    name.length = static_cast<std::uint32_t>(text.size());
    return filer.text(name);
}

template <class Integer>
Integer narrowed(std::int64_t value) {
    using Limits = std::numeric_limits<Integer>;
    return value < Limits::min() || value > Limits::max() ? Integer{} : static_cast<Integer>(value);
}

std::optional<Value> valueOf(const DxfTag& tag, AcDbDxfFiler& filer) {
    switch (valueKind(tag.code)) {
    case ValueKind::kReal:
        return Value(tag.real());
    case ValueKind::kInt16:
        return Value(narrowed<std::int16_t>(tag.integer()));
    case ValueKind::kInt32:
        return Value(narrowed<std::int32_t>(tag.integer()));
    case ValueKind::kInt64:
        return Value(tag.integer());
    case ValueKind::kText:
    case ValueKind::kHandle:
        return Value(textOf(tag, filer));
    case ValueKind::kName:
        return Value(filer.objectId(tag));
    case ValueKind::kBinary:
        return Value(chunkOf(tag));
    case ValueKind::kPoint: // see pointAt
    case ValueKind::kNothing:
        break;
    }
    return std::nullopt;
}

/// The point that begins the groups, and how many of them make it: y and z have codes greater by
/// 10 and 20 than x and stand right behind it, when they are there.
AcGePoint3d pointAt(std::span<const DxfTag> groups, std::size_t& count) {
    constexpr int kNextAxis = 10;
    AcGePoint3d point;
    for (count = 0; count < 3 && count < groups.size(); ++count) {
        const auto axis = static_cast<unsigned>(count);
        if (groups[count].code != groups[0].code + kNextAxis * static_cast<int>(axis)) break;
        point[axis] = groups[count].real();
    }
    return point;
}

struct ValueSetter {
    resbuf& buffer;

    void operator()(double real) const { buffer.resval.rreal = real; }
    void operator()(const AcGePoint3d& point) const {
        for (unsigned axis = 0; axis < 3; ++axis)
            buffer.resval.rpoint[axis] = point[axis];
    }
    void operator()(std::int16_t number) const { buffer.resval.rint = number; }
    void operator()(std::int32_t number) const { buffer.resval.rlong = number; }
    void operator()(std::int64_t number) const { buffer.resval.mnInt64 = number; }
    void operator()(const std::wstring& text) const {
        buffer.resval.rstring = acutNewString(text.c_str());
    }
    void operator()(AcDbObjectId id) const {
        buffer.resval.rlname[0] = id.asOldId();
        buffer.resval.rlname[1] = 0;
    }
    void operator()(const Bytes& bytes) const {
        constexpr std::size_t kMost = std::numeric_limits<short>::max();
        const std::size_t size = std::min(bytes.size(), kMost);
        buffer.resval.rbinary.clen = static_cast<short>(size);
        auto* const copy = static_cast<char*>(std::malloc(std::max<std::size_t>(size, 1)));
        if (size > 0) std::memcpy(copy, bytes.data(), size);
        buffer.resval.rbinary.buf = copy;
    }
};

struct GroupWriter {
    DxfOutput& out;
    int code;

    void operator()(double real) const { out.real(code, real); }
    void operator()(const AcGePoint3d& point) const { out.point(code, point); }
    template <std::integral Number>
    void operator()(Number number) const {
        out.integer(code, number);
    }
    void operator()(const std::wstring& text) const { out.text(code, text); }
    void operator()(AcDbObjectId id) const { out.handle(code, id); }
    void operator()(const Bytes& bytes) const { out.bytes(code, {bytes.data(), bytes.size()}); }
};

} // namespace

std::wstring_view DataItem::text() const {
    const auto* const held = std::get_if<std::wstring>(&value);
    return held == nullptr ? std::wstring_view() : *held;
}

std::optional<DataItem> itemOf(const resbuf& buffer) {
    constexpr short kFirstListType = RTNONE; // Beyond group codes: of other lists.
    if (buffer.restype >= kFirstListType) return std::nullopt;
    auto value = valueOf(buffer);
    if (!value) return std::nullopt;
    return DataItem{buffer.restype, *std::move(value)};
}

void setValue(resbuf& buffer, const DataItem& item) {
    buffer.restype = item.code;
    std::visit(ValueSetter{buffer}, item.value);
}

resbuf* chainOf(std::span<const DataItem> items) {
    resbuf* first = nullptr;
    resbuf** link = &first;
    for (const DataItem& item : items) {
        resbuf* const buffer = acutNewRb(item.code);
        setValue(*buffer, item);
        *link = buffer;
        link = &buffer->rbnext;
    }
    return first;
}

DataItems itemsOf(std::span<const DxfTag> groups, AcDbDxfFiler& filer) {
    DataItems items;
    items.reserve(groups.size());
    while (!groups.empty()) {
        const DxfTag& tag = groups.front();
        std::size_t count = 1;
        if (valueKind(tag.code) == ValueKind::kPoint) {
            const AcGePoint3d point = pointAt(groups, count);
            items.push_back({tag.code, point});
        } else if (auto value = valueOf(tag, filer)) {
            items.push_back({tag.code, *std::move(value)});
        }
        groups = groups.subspan(count);
    }
    return items;
}

void writeItems(std::span<const DataItem> items, DxfOutput& out) {
    for (const DataItem& item : items)
        std::visit(GroupWriter{out, item.code}, item.value);
}

} // namespace headless
