#include "dxf/binary_scanner.h"

#include <bit>
#include <cstring>
#include <limits>

#include "dxf/group_codes.h"

namespace headless {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kMark = "AutoCAD Binary DXF\r\n\x1A\0"sv;
constexpr unsigned char kLongCode = 255;

static_assert(std::endian::native == std::endian::little, "numbers are read as they stand");

} // namespace

bool BinaryScanner::recognises(std::string_view bytes) { return bytes.starts_with(kMark); }

BinaryScanner::BinaryScanner(std::string_view bytes, DxfReadReport& report)
    : RecordScanner(bytes, report) {
    cursor_ = kMark.size();
    start_.offset = cursor_;
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
        fail("binary drawings above 4 GB cannot be read");
    }
    // The first group is code 0 with a name: with codes of two bytes another zero comes before it.
    const std::string_view groups = bytes.substr(kMark.size());
    oneByteCodes_ = groups.size() >= 2 && groups[1] != '\0';
}

bool BinaryScanner::cutOff(std::size_t at) {
    report_.add(at, 0, "the file ends in the middle of a group");
    cursor_ = bytes_.size();
    return false;
}

template <class Number>
bool BinaryScanner::readNumber(Number& number) {
    if (bytes_.size() - cursor_ < sizeof number) return false;
    std::memcpy(&number, bytes_.data() + cursor_, sizeof number);
    cursor_ += sizeof number;
    return true;
}

bool BinaryScanner::readCode(int& code) {
    if (oneByteCodes_) {
        unsigned char byte = 0;
        if (!readNumber(byte)) return false;
        code = byte;
        if (byte != kLongCode) return true;
    }
    std::int16_t word = 0;
    if (!readNumber(word)) return false;
    code = word;
    return true;
}

bool BinaryScanner::readText(DxfTag& tag) {
    const std::size_t rest = bytes_.size() - cursor_;
    const char* const begin = bytes_.data() + cursor_;
    const auto* const end = static_cast<const char*>(std::memchr(begin, '\0', rest));
    if (end == nullptr) return false;
    tag.kind = DxfTag::Kind::kText;
    tag.bytes = begin;
    tag.length = static_cast<std::uint32_t>(end - begin);
    cursor_ += tag.length + 1U;
    return true;
}

bool BinaryScanner::readChunk(DxfTag& tag) {
    unsigned char length = 0;
    if (!readNumber(length) || bytes_.size() - cursor_ < length) return false;
    tag.kind = DxfTag::Kind::kBinary;
    tag.bytes = bytes_.data() + cursor_;
    tag.length = length;
    cursor_ += length;
    return true;
}

bool BinaryScanner::readValue(int code, DxfTag& tag) {
    const auto whole = [&]<class Number>(Number number) {
        if (!readNumber(number)) return false;
        tag.kind = DxfTag::Kind::kInteger;
        tag.whole = number;
        return true;
    };
    switch (valueOfGroup(code)) {
    case DxfValue::kReal:
        tag.kind = DxfTag::Kind::kReal;
        return readNumber(tag.number);
    case DxfValue::kBool:
        return whole(std::uint8_t{});
    case DxfValue::kInt16:
        return whole(std::int16_t{});
    case DxfValue::kInt32:
        return whole(std::int32_t{});
    case DxfValue::kInt64:
        return whole(std::int64_t{});
    case DxfValue::kChunk:
        return readChunk(tag);
    case DxfValue::kText:
    case DxfValue::kNone:
        break;
    }
    return readText(tag);
}

bool BinaryScanner::readTag(DxfTag& tag) {
    const std::size_t begin = cursor_;
    if (begin >= bytes_.size()) return false;
    int code = 0;
    if (!readCode(code)) return cutOff(begin);
    // Without knowing the value's length nothing behind an unknown code can be read.
    if (valueOfGroup(code) == DxfValue::kNone) {
        report_.add(begin, 0, std::to_string(code) + " is no group code; the rest is not read");
        cursor_ = bytes_.size();
        return false;
    }
    tag.code = static_cast<std::int16_t>(code);
    tag.position = static_cast<std::uint32_t>(begin);
    tag.length = 0;
    return readValue(code, tag) || cutOff(begin);
}

} // namespace headless
