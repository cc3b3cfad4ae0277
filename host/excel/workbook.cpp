#include "excel/workbook.h"

#include <algorithm>

#include "win/casing.h"
#include "win/code_page.h"

namespace headless::excel {

std::shared_ptr<Sheet> Workbook::addSheet(std::size_t at) {
    auto sheet = std::make_shared<Sheet>();
    for (std::size_t number = sheets.size() + 1; sheet->name.empty(); ++number) {
        const std::string name = "Sheet" + std::to_string(number);
        if (findSheet(name) == nullptr) sheet->name = name;
    }
    at = std::min(at, sheets.size());
    sheets.insert(sheets.begin() + static_cast<std::ptrdiff_t>(at), sheet);
    return sheet;
}

std::shared_ptr<Sheet> Workbook::findSheet(std::string_view name) const {
    const std::wstring wanted = fromUtf8(name);
    const auto found = std::ranges::find_if(
        sheets, [&](const auto& sheet) { return equalNoCase(fromUtf8(sheet->name), wanted); });
    return found == sheets.end() ? nullptr : *found;
}

std::size_t Workbook::positionOf(const Sheet& sheet) const {
    const auto found =
        std::ranges::find_if(sheets, [&](const auto& other) { return other.get() == &sheet; });
    return static_cast<std::size_t>(found - sheets.begin());
}

std::string Workbook::nameRefusal(const Sheet& sheet, std::string_view name) const {
    constexpr std::size_t kLongest = 31;
    const std::wstring wide = fromUtf8(name);
    if (wide.empty()) return "a sheet's name cannot be empty";
    if (wide.size() > kLongest) return "a sheet's name has at most 31 characters";
    if (wide.find_first_of(L"[]:*?/\\") != std::wstring::npos) {
        return "a sheet's name cannot hold any of [ ] : * ? / \\";
    }
    if (wide.front() == L'\'' || wide.back() == L'\'') {
        return "a sheet's name cannot begin or end with an apostrophe";
    }
    const auto other = findSheet(name);
    if (other != nullptr && other.get() != &sheet) return "another sheet has that name";
    return {};
}

std::unique_ptr<Workbook> newWorkbook(int sheets) {
    auto workbook = std::make_unique<Workbook>();
    for (int i = 0; i < sheets; ++i)
        workbook->addSheet(workbook->sheets.size());
    return workbook;
}

} // namespace headless::excel
