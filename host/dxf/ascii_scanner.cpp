#include "dxf/ascii_scanner.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>

#include "dxf/group_codes.h"

namespace headless {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isBlank(char letter) { return letter == ' ' || letter == '\t' || letter == '\r'; }

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// As std::memchr; nearly all lines end before a call of that could begin.
const char* findByte(const char* at, std::size_t length, char wanted) {
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    constexpr std::uint64_t kTops = 0x8080808080808080;
    constexpr std::size_t kWord = sizeof kOnes;
    constexpr std::size_t kUsual = 4 * kWord;
    std::size_t looked = 0;
    for (;
         std::endian::native == std::endian::little && looked < kUsual && looked + kWord <= length;
         looked += kWord) {
        std::uint64_t word = 0;
        std::memcpy(&word, at + looked, sizeof word);
        // The lowest byte that is 0 now is the first that borrows.
        word ^= kOnes * static_cast<unsigned char>(wanted);
        const std::uint64_t zeros = (word - kOnes) & ~word & kTops;
        if (zeros != 0) return at + looked + std::countr_zero(zeros) / 8;
    }
    return static_cast<const char*>(std::memchr(at + looked, wanted, length - looked));
}

} // namespace

bool parseGroupCode(std::string_view line, int& code) {
    const std::string_view digits = trimmed(line);
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code);
    return !digits.empty() && error == std::errc{} && end == digits.data() + digits.size() &&
           code >= kFirstGroupCode && code <= kLastGroupCode;
}

AsciiScanner::AsciiScanner(std::string_view bytes, DxfReadReport& report)
    : RecordScanner(bytes, report) {
    if (bytes_.starts_with(kByteOrderMark)) cursor_ = kByteOrderMark.size();
    const std::string_view beginning = bytes_.substr(0, kLongestLine);
    if (beginning.find('\n') == std::string_view::npos &&
        beginning.find('\r') != std::string_view::npos) {
        lineEnd_ = '\r';
    }
    // Blank lines before the first group are harmless.
    Line line{};
    while (cursor_ < bytes_.size() && readLine(cursor_, line_, line) && line.ended &&
           trimmed({line.begin, line.end}).empty()) {
        cursor_ = line.after;
        ++line_;
    }
    start_ = {cursor_, line_};
}

bool AsciiScanner::refuseLongLine(std::uint32_t number) {
    fail(report_.place(number) + ": the line is longer than " + std::to_string(kLongestLine) +
         " characters");
    return false;
}

inline bool AsciiScanner::readLine(std::size_t offset, std::uint32_t number, Line& line) {
    const std::size_t rest = bytes_.size() - offset;
    const std::size_t within = std::min(rest, kLongestLine + 1);
    line.begin = bytes_.data() + offset;
    const char* const found = findByte(line.begin, within, lineEnd_);
    if (found == nullptr && rest > kLongestLine) return refuseLongLine(number);
    line.ended = found != nullptr;
    line.end = line.ended ? found : line.begin + rest;
    line.after = offset + static_cast<std::size_t>(line.end - line.begin) + (line.ended ? 1 : 0);
    if (line.end != line.begin && line.end[-1] == '\r') --line.end;
    return true;
}

/// Codes in three columns, as nearly all files have them.
inline bool AsciiScanner::readPaddedCode(int& code) {
    constexpr std::size_t kLongest = 5; // with the line's end
    if (bytes_.size() - cursor_ < kLongest) return false;
    const char* const at = bytes_.data() + cursor_;
    const auto digit = [](char c) { return static_cast<unsigned>(c - '0'); };
    const unsigned hundreds = at[0] == ' ' ? 0 : digit(at[0]);
    const unsigned tens = at[1] == ' ' && at[0] == ' ' ? 0 : digit(at[1]);
    const unsigned ones = digit(at[2]);
    const std::size_t length = at[3] == '\r' && lineEnd_ == '\n' ? kLongest : kLongest - 1;
    if (hundreds > 9 || tens > 9 || ones > 9 || at[length - 1] != lineEnd_) return false;
    code = static_cast<int>(hundreds * 100 + tens * 10 + ones);
    cursor_ += length;
    ++line_;
    return true;
}

inline bool AsciiScanner::readCode(int& code) {
    if (readPaddedCode(code)) return true;
    // Nearly all code lines are blanks, one to four digits and the line's end.
    const char* at = bytes_.data() + cursor_;
    const char* const last = bytes_.data() + bytes_.size();
    while (at != last && *at == ' ')
        ++at;
    int value = 0;
    const char* const digits = at;
    while (at != last && *at >= '0' && *at <= '9' && at - digits < 4)
        value = value * 10 + *at++ - '0';
    const bool any = at != digits;
    if (at != last && *at == '\r' && lineEnd_ == '\n') ++at;
    if (!any || at == last || *at != lineEnd_ || value > kLastGroupCode) {
        return readCodeSlowly(code);
    }
    code = value;
    cursor_ = static_cast<std::size_t>(at + 1 - bytes_.data());
    ++line_;
    return true;
}

bool AsciiScanner::readCodeSlowly(int& code) {
    bool skipping = false; // One complaint for a stretch of rubbish is enough.
    while (true) {
        if (cursor_ >= bytes_.size()) return false;
        Line line{};
        if (!readLine(cursor_, line_, line)) return false;
        const std::string_view text(line.begin, static_cast<std::size_t>(line.end - line.begin));
        if (parseGroupCode(text, code)) {
            if (!line.ended) report_.add(line_, 0, "the file ends in the middle of a group");
            cursor_ = line.after;
            ++line_;
            return line.ended;
        }
        if (!line.ended) {
            if (!trimmed(text).empty() && text.find('\x1A') != 0) {
                report_.add(line_, 0, "the file ends in the middle of a group");
            }
            cursor_ = bytes_.size();
            return false;
        }
        if (!skipping) report_.add(line_, 0, quote(trimmed(text)) + " is no group code; skipped");
        skipping = true;
        if (!resynchronise()) return false;
    }
}

bool AsciiScanner::resynchronise() {
    // A text broken in two lines is one line too many, a damaged code has a value to skip as well.
    Line first{};
    if (!readLine(cursor_, line_, first)) return false;
    if (first.after >= bytes_.size()) {
        cursor_ = bytes_.size();
        return true;
    }
    Line second{};
    if (!readLine(first.after, line_ + 1, second)) return false;
    const bool lineTooMany = plausibleGroupsFrom(first.after) > plausibleGroupsFrom(second.after);
    cursor_ = lineTooMany ? first.after : second.after;
    line_ += lineTooMany ? 1 : 2;
    return true;
}

int AsciiScanner::plausibleGroupsFrom(std::size_t offset) const {
    constexpr int kLooked = 6;
    constexpr std::size_t kLongestLooked = 4096;
    int groups = 0;
    while (groups < kLooked && offset < bytes_.size()) {
        std::string_view lines[2];
        for (std::string_view& line : lines) {
            if (offset > bytes_.size()) return groups;
            const std::string_view rest = bytes_.substr(offset, kLongestLooked);
            line = rest.substr(0, rest.find(lineEnd_));
            offset += line.size() + 1;
        }
        int code = 0;
        if (!parseGroupCode(lines[0], code)) return groups;
        const std::string_view value = trimmed(lines[1]);
        const bool named = !value.empty() && !(value.front() >= '0' && value.front() <= '9');
        if (code == 0 && !named) return groups;
        const DxfValue kind = valueOfGroup(code);
        double number = 0;
        if (kind == DxfValue::kReal &&
            std::from_chars(value.data(), value.data() + value.size(), number).ec != std::errc{}) {
            return groups;
        }
        ++groups;
    }
    return groups;
}

bool AsciiScanner::readTag(DxfTag& tag) {
    int code = 0;
    if (!readCode(code)) return false;
    const std::uint32_t place = line_ - 1;
    Line line{};
    if (!readLine(cursor_, line_, line)) return false;
    if (line.begin == line.end && !line.ended) {
        report_.add(place, 0, "the file ends in the middle of a group");
        return false;
    }
    cursor_ = line.after;
    ++line_;
    tag.code = static_cast<std::int16_t>(code);
    tag.kind = DxfTag::Kind::kText;
    tag.position = place;
    tag.bytes = line.begin;
    tag.length = static_cast<std::uint32_t>(line.end - line.begin);
    return true;
}

} // namespace headless
