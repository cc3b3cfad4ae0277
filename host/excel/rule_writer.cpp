#include "excel/rule_writer.h"

#include <cstring>

#include "excel/library_calls.h"

namespace headless::excel {
namespace {

/// In the order of InputKind; all as formulas, whatever they hold.
constexpr std::uint8_t kKinds[] = {LXW_VALIDATION_TYPE_ANY,
                                   LXW_VALIDATION_TYPE_INTEGER_FORMULA,
                                   LXW_VALIDATION_TYPE_DECIMAL_FORMULA,
                                   LXW_VALIDATION_TYPE_LIST_FORMULA,
                                   LXW_VALIDATION_TYPE_DATE_FORMULA,
                                   LXW_VALIDATION_TYPE_TIME_FORMULA,
                                   LXW_VALIDATION_TYPE_LENGTH_FORMULA,
                                   LXW_VALIDATION_TYPE_CUSTOM_FORMULA};

std::uint8_t switched(bool on) {
    return static_cast<std::uint8_t>(on ? LXW_VALIDATION_ON : LXW_VALIDATION_OFF);
}

void setCondition(lxw_data_validation& validation, InputRule& rule) {
    const bool compares = rule.kind != InputKind::kAny && rule.kind != InputKind::kList &&
                          rule.kind != InputKind::kCustom;
    const bool isPair = compares && (rule.comparison == InputOperator::kBetween ||
                                     rule.comparison == InputOperator::kNotBetween);
    validation.validate = kKinds[static_cast<std::size_t>(rule.kind)];
    // The library counts from 1 in the same order.
    if (compares)
        validation.criteria = static_cast<std::uint8_t>(static_cast<int>(rule.comparison) + 1);
    (isPair ? validation.minimum_formula : validation.value_formula) = rule.first.data();
    if (isPair) validation.maximum_formula = rule.second.data();
    validation.ignore_blank = switched(rule.allowsBlank);
    validation.dropdown = switched(rule.showsList);
}

void setMessages(lxw_data_validation& validation, InputRule& rule) {
    validation.show_input = switched(rule.showsPrompt);
    validation.show_error = switched(rule.showsRefusal);
    validation.error_type = static_cast<std::uint8_t>(rule.refusal);
    validation.input_title = rule.promptTitle.data();
    validation.input_message = rule.prompt.data();
    validation.error_title = rule.refusalTitle.data();
    validation.error_message = rule.refusalText.data();
}

} // namespace

std::string libraryTarget(const Link& link) {
    if (link.target.empty()) return "internal:" + link.location;
    const std::string place = link.location.empty() ? "" : "#" + link.location;
    constexpr std::string_view kFile = "file:///";
    if (link.target.starts_with(kFile))
        return "external:" + link.target.substr(kFile.size()) + place;
    // Whatever has no scheme lies beside the workbook.
    const bool isAddress = link.target.find(':') != std::string::npos;
    return (isAddress ? "" : "external:") + link.target + place;
}

void writeInputRule(const InputRule& rule, lxw_worksheet* target) {
    InputRule own = rule; // The library takes texts that it might change.
    lxw_data_validation validation{};
    setCondition(validation, own);
    setMessages(validation, own);
    const Area& area = rule.area;
    check(worksheet_data_validation_range(target, rowIndex(area.top), columnIndex(area.left),
                                          rowIndex(area.bottom), columnIndex(area.right),
                                          &validation));
}

void writeProtection(const Protection& protection, lxw_worksheet* target) {
    const auto forbids = [&](Forbidden what) {
        return protection.forbids[static_cast<std::size_t>(what)];
    };
    lxw_protection options{};
    options.no_select_locked_cells = forbids(Forbidden::kSelectLocked);
    options.no_select_unlocked_cells = forbids(Forbidden::kSelectUnlocked);
    struct Choice {
        std::uint8_t lxw_protection::*allows;
        Forbidden what;
    };
    static constexpr Choice kChoices[] = {
        {&lxw_protection::format_cells, Forbidden::kFormatCells},
        {&lxw_protection::format_columns, Forbidden::kFormatColumns},
        {&lxw_protection::format_rows, Forbidden::kFormatRows},
        {&lxw_protection::insert_columns, Forbidden::kInsertColumns},
        {&lxw_protection::insert_rows, Forbidden::kInsertRows},
        {&lxw_protection::insert_hyperlinks, Forbidden::kInsertLinks},
        {&lxw_protection::delete_columns, Forbidden::kDeleteColumns},
        {&lxw_protection::delete_rows, Forbidden::kDeleteRows},
        {&lxw_protection::sort, Forbidden::kSort},
        {&lxw_protection::autofilter, Forbidden::kFilter},
        {&lxw_protection::pivot_tables, Forbidden::kPivotTables},
        {&lxw_protection::scenarios, Forbidden::kScenarios},
        {&lxw_protection::objects, Forbidden::kObjects},
    };
    for (const Choice& choice : kChoices)
        options.*choice.allows = !forbids(choice.what);
    worksheet_protect(target, nullptr, &options);
    // It takes passwords, and would hash them; only the hash is known.
    std::strncpy(target->protection.hash, protection.password.c_str(),
                 sizeof target->protection.hash - 1);
}

void writeQuietAreas(const QuietAreas& quiet, lxw_worksheet* target) {
    for (std::size_t i = 0; i < quiet.size(); ++i) {
        std::string areas;
        for (const Area& area : quiet[i])
            areas += (areas.empty() ? "" : " ") + areaText(area, false);
        if (areas.empty()) continue;
        check(worksheet_ignore_errors(target, static_cast<std::uint8_t>(i + 1), areas.c_str()));
    }
}

} // namespace headless::excel
