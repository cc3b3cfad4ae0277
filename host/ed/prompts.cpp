#include "ed/prompts.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "db/fault_hook.h"
#include "ed/parse_input.h"
#include "ed/point_arrays.h"
#include "ed/prompt_answers.h"
#include "ed/state.h"

namespace headless {
namespace {

constexpr std::size_t kDefaultTextSize = 133;

/// What is wrong with an answer, for the user to read.
struct Refusal {
    const wchar_t* text;
};

template <class Value>
using Converted = std::variant<Value, Refusal>;

void copyText(std::wstring_view text, ACHAR* buffer, std::size_t size) {
    if (buffer == nullptr || size == 0) return;
    const std::size_t count = std::min(text.size(), size - 1);
    std::copy_n(text.data(), count, buffer);
    buffer[count] = L'\0';
}

bool isTextOrNumber(const InputAnswer& answer) {
    return std::holds_alternative<std::wstring>(answer.value) ||
           std::holds_alternative<double>(answer.value) ||
           std::holds_alternative<int>(answer.value);
}

/// Asks until the answer converts.
/// @param convert  InputAnswer -> Converted<Value>
template <class Value, class Convert>
int askUntilValid(const ACHAR* prompt, const PromptRules& rules, Convert convert, Value& result) {
    const OfferedKeywords offered(rules.keywords);
    for (;;) {
        const InputAnswer answer = ask(prompt, true);
        if (const auto cancelled = cancellation(answer)) return *cancelled;
        if (answer.isEnter() && !rules.has(RSG_NONULL)) return RTNONE;
        if (const auto keyword = keywordOf(answer, rules)) return *keyword;

        Converted<Value> converted = convert(answer);
        if (auto* value = std::get_if<Value>(&converted)) {
            result = *value;
            return RTNORM;
        }
        if (rules.has(RSG_OTHER) && isTextOrNumber(answer) && !answer.isEnter())
            return giveText(shownText(answer));
        EdState::current().output.print(std::get<Refusal>(converted).text);
    }
}

template <class Number>
Converted<Number> checkSign(Number value, const PromptRules& rules) {
    if (rules.has(RSG_NOZERO) && value == 0) return Refusal{L"\nThe value must not be zero."};
    if (rules.has(RSG_NONEG) && value < 0) return Refusal{L"\nThe value must not be negative."};
    return value;
}

std::optional<int> integerOf(const InputAnswer& answer) {
    if (const auto* text = std::get_if<std::wstring>(&answer.value)) return parseInteger(*text);
    if (const auto* number = std::get_if<int>(&answer.value)) return *number;
    return std::nullopt;
}

std::optional<double> realOf(const InputAnswer& answer) {
    if (const auto* text = std::get_if<std::wstring>(&answer.value)) return parseReal(*text);
    if (const auto* number = std::get_if<double>(&answer.value)) return *number;
    if (const auto* number = std::get_if<int>(&answer.value)) return *number;
    return std::nullopt;
}

} // namespace

PointAnswer askPoint(const ACHAR* prompt, const PromptRules& rules, const double* base) {
    PointAnswer given{};
    const auto convert = [&](const InputAnswer& answer) -> Converted<AcGePoint3d> {
        const auto value = pointOf(answer, base);
        given.clicked = answer.clicked;
        if (value) return *value;
        return Refusal{L"\nA point is needed, for example 100,50 or @20<45."};
    };
    given.result = askUntilValid(prompt, rules, convert, given.point);
    return given;
}

} // namespace headless

using namespace headless;

int acedInitGet(int flags, const ACHAR* keywords) {
    EdState::current().promptRules = {flags, Keywords(keywords == nullptr ? L"" : keywords)};
    return RTNORM;
}

int acedGetInput(ACHAR* text) { return acedGetInput(text, kDefaultTextSize); }

int acedGetInput(ACHAR* text, std::size_t size) {
    const auto& picked = EdState::current().pickedText;
    if (!picked || text == nullptr) return RTERROR;
    copyText(*picked, text, size);
    return RTNORM;
}

int acedGetString(int spaces, const ACHAR* prompt, ACHAR* text) {
    return acedGetString(spaces, prompt, text, kDefaultTextSize);
}

int acedGetString(int spaces, const ACHAR* prompt, ACHAR* text, std::size_t size) {
    if (text == nullptr || size == 0) return RTERROR;
    EdState::current().promptRules = {};
    if (FaultHook::fails("acedGetString")) return RTERROR;
    InputAnswer answer = ask(prompt, spaces == 0);
    while (answer.clicked)
        answer = ask(nullptr, spaces == 0);
    if (const auto cancelled = cancellation(answer)) return *cancelled;
    copyText(shownText(answer), text, size);
    return RTNORM;
}

int acedGetKword(const ACHAR* prompt, ACHAR* keyword) {
    return acedGetKword(prompt, keyword, kDefaultTextSize);
}

int acedGetKword(const ACHAR* prompt, ACHAR* keyword, std::size_t size) {
    const PromptRules rules = takeRules();
    if (keyword == nullptr || rules.keywords.isEmpty()) return RTERROR;
    if (FaultHook::fails("acedGetKword")) return RTERROR;
    const auto convert = [](const InputAnswer& /*answer*/) -> Converted<std::wstring> {
        return Refusal{L"\nThat is none of the options."};
    };
    std::wstring unused;
    const int result = askUntilValid(prompt, rules, convert, unused);
    if (result != RTKWORD) return result;
    copyText(*EdState::current().pickedText, keyword, size);
    return RTNORM;
}

int acedGetInt(const ACHAR* prompt, int* result) {
    if (result == nullptr) return RTERROR;
    const PromptRules rules = takeRules();
    if (FaultHook::fails("acedGetInt")) return RTERROR;
    const auto convert = [&](const InputAnswer& answer) -> Converted<int> {
        const auto value = integerOf(answer);
        if (value) return checkSign(*value, rules);
        return Refusal{L"\nA whole number from -32768 to 32767 is needed."};
    };
    return askUntilValid(prompt, rules, convert, *result);
}

int acedGetReal(const ACHAR* prompt, ads_real* result) {
    if (result == nullptr) return RTERROR;
    const PromptRules rules = takeRules();
    if (FaultHook::fails("acedGetReal")) return RTERROR;
    const auto convert = [&](const InputAnswer& answer) -> Converted<double> {
        const auto value = realOf(answer);
        if (value) return checkSign(*value, rules);
        return Refusal{L"\nA number is needed."};
    };
    return askUntilValid(prompt, rules, convert, *result);
}

int acedGetPoint(const ads_point base, const ACHAR* prompt, ads_point result) {
    if (result == nullptr) return RTERROR;
    const PromptRules rules = takeRules();
    if (FaultHook::fails("acedGetPoint")) return RTERROR;
    const PointAnswer answer = askPoint(prompt, rules, base);
    if (answer.result == RTNORM) asPnt3d(result) = answer.point;
    return answer.result;
}

int acedGetCorner(const ads_point base, const ACHAR* prompt, ads_point result) {
    return base == nullptr ? RTERROR : acedGetPoint(base, prompt, result);
}
