#include "excel/rule_reader.h"

#include <algorithm>

#include "excel/file_names.h"
#include "excel/formula_references.h"

namespace headless::excel {
namespace {

/// Areas with blanks between them.
std::vector<Area> readAreas(std::string_view text) {
    std::vector<Area> areas;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (const auto area = parseArea(text.substr(0, end))) areas.push_back(*area);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return areas;
}

/// Letters, as programs count them for their limits.
std::size_t length(const std::string& utf8) {
    return static_cast<std::size_t>(
        std::ranges::count_if(utf8, [](char c) { return (c & 0xC0) != 0x80; }));
}

/// What no program takes as a rule, and nobody could write.
bool isWithinLimits(const InputRule& rule) {
    constexpr std::size_t kTitle = 32;
    constexpr std::size_t kText = 255;
    return (rule.kind == InputKind::kAny || !rule.first.empty()) && length(rule.first) <= kText &&
           length(rule.second) <= kText && length(rule.promptTitle) <= kTitle &&
           length(rule.refusalTitle) <= kTitle && length(rule.prompt) <= kText &&
           length(rule.refusalText) <= kText;
}

bool isWithinLimits(const Link& link) {
    constexpr std::size_t kMostCells = 1000;
    constexpr std::size_t kAddress = 2000;
    constexpr std::size_t kTip = 255;
    return link.area.cells() <= kMostCells &&
           link.target.size() + link.location.size() <= kAddress && length(link.tip) <= kTip;
}

InputRule readInputRule(const pugi::xml_node& node) {
    static constexpr std::array<std::string_view, 8> kKinds = {
        "none", "whole", "decimal", "list", "date", "time", "textLength", "custom"};
    static constexpr std::array<std::string_view, 8> kOperators = {
        "between",  "notBetween",         "equal",          "notEqual", "greaterThan",
        "lessThan", "greaterThanOrEqual", "lessThanOrEqual"};
    static constexpr std::array<std::string_view, 3> kRefusals = {"stop", "warning", "information"};
    InputRule rule;
    rule.kind = named(node.attribute("type").value(), kKinds, InputKind::kAny);
    rule.comparison =
        named(node.attribute("operator").value(), kOperators, InputOperator::kBetween);
    rule.refusal = named(node.attribute("errorStyle").value(), kRefusals, InputRefusal::kStop);
    rule.first = child(node, "formula1").text().get();
    rule.second = child(node, "formula2").text().get();
    rule.allowsBlank = node.attribute("allowBlank").as_bool();
    rule.showsList = !node.attribute("showDropDown").as_bool(); // It hides the list.
    rule.showsPrompt = node.attribute("showInputMessage").as_bool();
    rule.showsRefusal = node.attribute("showErrorMessage").as_bool();
    rule.promptTitle = node.attribute("promptTitle").value();
    rule.prompt = node.attribute("prompt").value();
    rule.refusalTitle = node.attribute("errorTitle").value();
    rule.refusalText = node.attribute("error").value();
    return rule;
}

} // namespace

bool readLinks(Sheet& sheet, const pugi::xml_node& list, const std::vector<Relation>& relations) {
    constexpr std::size_t kMostInSheet = 60000; // cells; programs take 65530
    std::size_t cells = 0;
    bool complete = true;
    for (const pugi::xml_node& node : list.children()) {
        const auto area = parseArea(node.attribute("ref").value());
        const Relation* found = findId(relations, linkAttribute(node, "id").value());
        Link link{area.value_or(wholeSheet()), found == nullptr ? "" : found->target,
                  node.attribute("location").value(), node.attribute("tooltip").value()};
        // Both ways lead to a file beside the workbook.
        if (link.target.find(':') == std::string::npos)
            std::ranges::replace(link.target, '\\', '/');
        if (!isWithinLimits(link) || cells + link.area.cells() > kMostInSheet) {
            complete = false;
            continue;
        }
        cells += link.area.cells();
        sheet.links.push_back(std::move(link));
    }
    return complete;
}

bool readInputRules(Sheet& sheet, const pugi::xml_node& list) {
    bool complete = true;
    for (const pugi::xml_node& node : list.children()) {
        InputRule rule = readInputRule(node);
        const std::vector<Area> areas = readAreas(node.attribute("sqref").value());
        complete = complete && isWithinLimits(rule);
        if (!isWithinLimits(rule)) continue;
        // Formulas are those of the first cell.
        for (const Area& area : areas) {
            InputRule& one = sheet.inputRules.emplace_back(rule);
            one.area = area;
            const int down = area.top - areas.front().top;
            const int right = area.left - areas.front().left;
            one.first = copiedFormula(rule.first, down, right);
            one.second = copiedFormula(rule.second, down, right);
        }
    }
    return complete;
}

bool readProtection(Sheet& sheet, const pugi::xml_node& node) {
    if (!node.attribute("sheet").as_bool()) return true;
    Protection& protection = sheet.protection.emplace();
    for (std::size_t i = 0; i < kForbidden.size(); ++i) {
        const auto what = static_cast<Forbidden>(i);
        const bool usually = what != Forbidden::kObjects && what != Forbidden::kScenarios &&
                             what != Forbidden::kSelectLocked && what != Forbidden::kSelectUnlocked;
        protection.forbids[i] = node.attribute(kForbidden[i].data()).as_bool(usually);
    }
    protection.password = node.attribute("password").value();
    return !node.attribute("hashValue");
}

void readQuietAreas(Sheet& sheet, const pugi::xml_node& list) {
    static constexpr std::array<std::string_view, kComplaints> kNames = {
        "numberStoredAsText", "evalError",        "formula",
        "formulaRange",       "unlockedFormula",  "emptyCellReference",
        "listDataValidation", "calculatedColumn", "twoDigitTextYear"};
    for (const pugi::xml_node& node : list.children()) {
        const std::vector<Area> areas = readAreas(node.attribute("sqref").value());
        for (std::size_t i = 0; i < kComplaints; ++i) {
            if (node.attribute(kNames[i].data()).as_bool())
                sheet.quiet[i].insert(sheet.quiet[i].end(), areas.begin(), areas.end());
        }
    }
}

} // namespace headless::excel
