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
    constexpr std::size_t kMostCells = 1000;
    bool complete = true;
    for (const pugi::xml_node& node : list.children()) {
        const auto area = parseArea(node.attribute("ref").value());
        const Relation* found = findId(relations, linkAttribute(node, "id").value());
        if (!area || area->cells() > kMostCells) {
            complete = false;
            continue;
        }
        std::string target = found == nullptr ? "" : found->target;
        // Both ways lead to a file beside the workbook.
        if (target.find(':') == std::string::npos) std::ranges::replace(target, '\\', '/');
        sheet.links.push_back({*area, std::move(target), node.attribute("location").value(),
                               node.attribute("tooltip").value()});
    }
    return complete;
}

void readInputRules(Sheet& sheet, const pugi::xml_node& list) {
    for (const pugi::xml_node& node : list.children()) {
        InputRule rule = readInputRule(node);
        const std::vector<Area> areas = readAreas(node.attribute("sqref").value());
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
