#include "ed/keywords.h"

#include <algorithm>

#include "win/casing.h"

namespace headless {
namespace {

std::vector<std::wstring> words(std::wstring_view list) {
    std::vector<std::wstring> result;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(L' '), list.size());
        if (end > 0) result.emplace_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return result;
}

bool isCapital(wchar_t c) { return lower(c) != c; }
bool isSmall(wchar_t c) { return upper(c) != c; }

/// A keyword without its comma form.
std::wstring fullForm(std::wstring_view keyword) {
    return std::wstring(keyword.substr(0, std::min(keyword.find(L','), keyword.size())));
}

/// True when `input` (in capitals) is a start of `full` with at least `least` letters.
bool abbreviates(std::wstring_view input, std::wstring_view full, std::size_t least) {
    return input.size() >= std::max<std::size_t>(least, 1) && full.starts_with(input);
}

/// True when `input` (in capitals) stands for the keyword.
bool stands(std::wstring_view input, std::wstring_view keyword) {
    const std::wstring_view written = keyword.substr(0, keyword.find(L','));
    const std::wstring full = upperCased(written);
    if (written.size() < keyword.size()) {
        const std::wstring shortest = upperCased(keyword.substr(written.size() + 1));
        return abbreviates(input, full, shortest.size()) || input == shortest;
    }
    const auto first = std::ranges::find_if(written, isCapital);
    // Without capitals, or small letters, the whole word is asked for. Digits belong to a run.
    if (first == written.end()) return input == full;
    const auto last = std::find_if(first, written.end(), isSmall);
    const auto start = static_cast<std::size_t>(first - written.begin());
    const auto end = static_cast<std::size_t>(last - written.begin());
    return abbreviates(input, full, start == 0 ? end : start + 1) ||
           abbreviates(input, std::wstring_view(full).substr(start), end - start);
}

} // namespace

Keywords::Keywords(std::wstring_view list) {
    const std::size_t underscore = list.find(L'_');
    const std::vector<std::wstring> locals = words(list.substr(0, underscore));
    std::vector<std::wstring> globals;
    if (underscore != std::wstring_view::npos) globals = words(list.substr(underscore + 1));
    for (std::size_t i = 0; i < locals.size(); ++i) {
        keywords_.push_back({locals[i], i < globals.size() ? globals[i] : locals[i]});
    }
}

std::vector<std::wstring> Keywords::names() const {
    std::vector<std::wstring> result;
    for (const Keyword& keyword : keywords_)
        result.push_back(fullForm(keyword.local));
    return result;
}

std::optional<std::wstring> Keywords::match(std::wstring_view input) const {
    const bool global = !input.empty() && input.front() == L'_';
    if (global) input.remove_prefix(1);
    if (input.empty()) return std::nullopt;
    const std::wstring wanted = upperCased(input);
    for (const Keyword& keyword : keywords_) {
        if (stands(wanted, global ? keyword.global : keyword.local)) {
            return fullForm(keyword.global);
        }
    }
    return std::nullopt;
}

} // namespace headless
