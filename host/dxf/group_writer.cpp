#include "dxf/group_writer.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "db/residence.h"
#include "db/symbol_table.h"
#include "dxf/group_codes.h"

namespace headless {
namespace {

constexpr int kNextAxis = 10;
constexpr int kLastOfOneByte = 254;
constexpr std::size_t kMostOfNumber = 32; // bytes

/// As wide as CAD programs write numbers of that kind.
std::ptrdiff_t widthOf(DxfValue kind) {
    constexpr std::ptrdiff_t kShort = 6;
    constexpr std::ptrdiff_t kLong = 9;
    if (kind == DxfValue::kInt16 || kind == DxfValue::kBool) return kShort;
    return kind == DxfValue::kInt32 ? kLong : 0;
}

/// Puts the number at `to`, with blanks before it where it is not as wide; answers where it ends.
template <class Number>
char* putPadded(Number value, std::ptrdiff_t width, char* to) {
    char digits[kMostOfNumber];
    const char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    to = std::fill_n(to, std::max<std::ptrdiff_t>(width - (end - digits), 0), ' ');
    return std::copy(static_cast<const char*>(digits), end, to);
}

/// Likewise the fewest digits that read back as the same number, always with a point or an
/// exponent.
char* putReal(double value, char* to) {
    char* const end = std::to_chars(to, to + kMostOfNumber, value).ptr;
    const auto isPart = [](char c) { return c == '.' || c == 'e'; };
    return std::any_of(to, end, isPart) ? end : std::copy_n(".0", 2, end);
}

std::string_view handleDigits(std::uint64_t value, char (&room)[16]) {
    char* at = room + sizeof room;
    do {
        *--at = "0123456789ABCDEF"[value & 0xF];
        value >>= 4;
    } while (value != 0);
    return {at, static_cast<std::size_t>(room + sizeof room - at)};
}

} // namespace

GroupWriter::GroupWriter(const DrawingForm& form, std::string& to) : form_(form), to_(to) {
    int code = kFirstGroupCode;
    for (CodeLine& line : codeLines_) {
        char* const begin = line.bytes.data();
        line.length = static_cast<std::uint8_t>(putAnyCodeLine(code++, begin) - begin);
    }
}

char* GroupWriter::putLineEnd(char* to) const {
    return std::copy(form_.lineEnd.begin(), form_.lineEnd.end(), to);
}

char* GroupWriter::putAnyCodeLine(int code, char* to) const {
    constexpr std::ptrdiff_t kWidth = 3;
    return putLineEnd(putPadded(code, form_.padded ? kWidth : 0, to));
}

char* GroupWriter::putCodeLine(int code, char* to) const {
    if (valueOfGroup(code) == DxfValue::kNone) return putAnyCodeLine(code, to);
    const CodeLine& line = codeLines_[static_cast<std::size_t>(code - kFirstGroupCode)];
    std::memcpy(to, line.bytes.data(), line.bytes.size());
    return to + line.length;
}

void GroupWriter::code(int code) {
    if (!form_.binary) {
        char line[kMostOfNumber];
        to_.append(line, putCodeLine(code, line));
        return;
    }
    if (form_.oneByteCodes && code >= 0 && code <= kLastOfOneByte) {
        to_ += static_cast<char>(code);
        return;
    }
    if (form_.oneByteCodes) to_ += '\xFF';
    raw(static_cast<std::int16_t>(code));
}

template <class Number>
void GroupWriter::raw(Number number) {
    to_.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void GroupWriter::endValue() {
    if (form_.binary)
        to_ += '\0';
    else
        to_ += form_.lineEnd;
}

void GroupWriter::text(int code, std::wstring_view value) {
    this->code(code);
    form_.encoder.append(value, to_);
    endValue();
}

void GroupWriter::name(int code, std::string_view value) {
    this->code(code);
    to_ += value;
    endValue();
}

void GroupWriter::real(int code, double value) {
    if (valueOfGroup(code) != DxfValue::kReal) {
        integer(code, static_cast<std::int64_t>(value));
        return;
    }
    if (form_.binary) {
        this->code(code);
        raw(value);
        return;
    }
    char group[3 * kMostOfNumber];
    to_.append(group, putLineEnd(putReal(value, putCodeLine(code, group))));
}

void GroupWriter::binaryInteger(int code, std::int64_t value) {
    switch (valueOfGroup(code)) {
    case DxfValue::kReal:
        raw(static_cast<double>(value));
        break;
    case DxfValue::kBool:
        raw(static_cast<std::uint8_t>(value));
        break;
    case DxfValue::kInt16:
        raw(static_cast<std::int16_t>(value));
        break;
    case DxfValue::kInt32:
        raw(static_cast<std::int32_t>(value));
        break;
    case DxfValue::kInt64:
        raw(value);
        break;
    default: {
        to_ += std::to_string(value);
        endValue();
    }
    }
}

void GroupWriter::integer(int code, std::int64_t value) {
    if (form_.binary) {
        this->code(code);
        binaryInteger(code, value);
        return;
    }
    const DxfValue kind = valueOfGroup(code);
    char group[3 * kMostOfNumber];
    char* end = putCodeLine(code, group);
    if (kind == DxfValue::kReal)
        end = putReal(static_cast<double>(value), end);
    else
        end = putPadded(value, form_.padded ? widthOf(kind) : 0, end);
    to_.append(group, putLineEnd(end));
}

void GroupWriter::point(int code, const AcGePoint3d& value) {
    real(code, value.x);
    real(code + kNextAxis, value.y);
    real(code + 2 * kNextAxis, value.z);
}

void GroupWriter::handle(int code, std::uint64_t value) {
    char room[16];
    name(code, handleDigits(value, room));
}

void GroupWriter::chunk(int code, std::string_view value) {
    constexpr std::size_t kMost = 127;
    do {
        const std::string_view piece = value.substr(0, kMost);
        value.remove_prefix(piece.size());
        this->code(code);
        if (form_.binary) {
            to_ += static_cast<char>(piece.size());
            to_ += piece;
            continue;
        }
        for (const char byte : piece) {
            to_ += "0123456789ABCDEF"[static_cast<unsigned char>(byte) >> 4];
            to_ += "0123456789ABCDEF"[static_cast<unsigned char>(byte) & 0xF];
        }
        endValue();
    } while (!value.empty());
}

void GroupWriter::tag(const DxfOutTag& tag) {
    switch (tag.kind) {
    case DxfOutTag::Kind::kText:
        text(tag.code, tag.text());
        break;
    case DxfOutTag::Kind::kName:
        name(tag.code, tag.chunk());
        break;
    case DxfOutTag::Kind::kReal:
        real(tag.code, tag.real);
        break;
    case DxfOutTag::Kind::kInteger:
    case DxfOutTag::Kind::kFlags:
        integer(tag.code, tag.integer);
        break;
    case DxfOutTag::Kind::kHandle:
        handle(tag.code, tag.id().handle());
        break;
    case DxfOutTag::Kind::kNumber:
        handle(tag.code, tag.number);
        break;
    case DxfOutTag::Kind::kSymbol: {
        const auto* const record = Residence::peek<AcDbSymbolTableRecord>(tag.id());
        text(tag.code, record == nullptr ? std::wstring_view() : record->nameOf());
        break;
    }
    case DxfOutTag::Kind::kBytes:
        chunk(tag.code, tag.chunk());
        break;
    }
}

void GroupWriter::item(const DataItem& item) {
    struct Put {
        GroupWriter& groups;
        int code;
        void operator()(double value) const { groups.real(code, value); }
        void operator()(const AcGePoint3d& value) const { groups.point(code, value); }
        void operator()(std::int16_t value) const { groups.integer(code, value); }
        void operator()(std::int32_t value) const { groups.integer(code, value); }
        void operator()(std::int64_t value) const { groups.integer(code, value); }
        void operator()(const std::wstring& value) const { groups.text(code, value); }
        void operator()(AcDbObjectId value) const { groups.handle(code, value.handle()); }
        void operator()(const DataItem::Bytes& value) const {
            groups.chunk(code, {value.data(), value.size()});
        }
    };
    std::visit(Put{*this, item.code}, item.value);
}

} // namespace headless
