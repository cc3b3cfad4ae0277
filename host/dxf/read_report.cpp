#include "dxf/read_report.h"

#include <charconv>

namespace headless {

void DxfReadReport::add(std::uint64_t place, std::uint64_t handle, std::string_view text) {
    if (paused_ != 0) return;
    ++count_;
    if (!full()) findings_.push_back({place, handle, std::string(text)});
}

std::string DxfReadReport::place(std::uint64_t place) const {
    return (binary_ ? "byte " : "line ") + std::to_string(place);
}

std::string DxfReadReport::describe(const DxfFinding& finding) const {
    std::string line = place(finding.place) + ": ";
    if (finding.handle != 0) line += "object " + handleText(finding.handle) + ": ";
    return line + finding.text;
}

std::string handleText(std::uint64_t handle) {
    char digits[16];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, handle, 16);
    std::string text(digits, end);
    for (char& digit : text) {
        if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
    }
    return text;
}

std::string quote(std::string_view text) {
    constexpr std::size_t kLongest = 40;
    std::string shown = "\"";
    for (const char letter : text.substr(0, kLongest)) {
        shown += letter >= ' ' && letter <= '~' ? letter : '?';
    }
    if (text.size() > kLongest) shown += "...";
    return shown + '"';
}

} // namespace headless
