#include "ed/prompts.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "ed/parse_input.h"
#include "ed/state.h"
#include "win/format.h"

namespace headless {
namespace {

constexpr std::size_t kDefaultTextSize = 133;

std::wstring formatted(const wchar_t* format, std::initializer_list<FormatValue> values) {
    ValueArguments arguments({values.begin(), values.size()});
    return formatText(format, arguments);
}

/// An answer as it would be typed; Escape and the end of input have no text.
struct TypedForm {
    std::wstring operator()(const std::wstring& text) const { return text; }
    std::wstring operator()(int number) const { return formatted(L"%d", {number}); }
    std::wstring operator()(double number) const { return formatted(L"%.15g", {number}); }
    std::wstring operator()(const AcGePoint3d& point) const {
        return formatted(L"%.15g,%.15g,%.15g", {point.x, point.y, point.z});
    }
    template <class Textless>
    std::wstring operator()(const Textless& /*answer*/) const {
        return {};
    }
};

std::wstring shownText(const InputAnswer& answer) { return std::visit(TypedForm{}, answer.value); }

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

/// The rules of acedInitGet for this prompt; the next one starts without any.
PromptRules takeRules() { return std::exchange(EdState::current().promptRules, PromptRules{}); }

/// RTCAN when the answer ends the prompt: Escape, or no more input.
std::optional<int> cancellation(const InputAnswer& answer) {
    CommandLineOutput& output = EdState::current().output;
    if (std::holds_alternative<EscapeKey>(answer.value)) {
        output.print(L"*Cancel*");
        return RTCAN;
    }
    if (std::holds_alternative<InputEnded>(answer.value)) {
        output.print(L"\nThere is no more input: the prompt is cancelled.");
        return RTCAN;
    }
    return std::nullopt;
}

int giveText(std::wstring text) {
    EdState::current().pickedText = std::move(text);
    return RTKWORD;
}

/// RTKWORD when the answer is one of the keywords.
std::optional<int> keywordOf(const InputAnswer& answer, const PromptRules& rules) {
    const auto* text = std::get_if<std::wstring>(&answer.value);
    if (text == nullptr) return std::nullopt;
    if (auto keyword = rules.keywords.match(*text)) return giveText(std::move(*keyword));
    return std::nullopt;
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

/// Where a typed point is counted from.
PointFrame pointFrame(const double* base) {
    const SystemVariables& variables = EdState::current().variables;
    PointFrame frame;
    frame.elevation = variables.real(L"ELEVATION");
    frame.last =
        base == nullptr ? variables.point(L"LASTPOINT") : AcGePoint3d(base[0], base[1], base[2]);
    return frame;
}

std::optional<AcGePoint3d> pointOf(const InputAnswer& answer, const double* base) {
    if (const auto* text = std::get_if<std::wstring>(&answer.value)) {
        return parsePoint(*text, pointFrame(base));
    }
    if (const auto* point = std::get_if<AcGePoint3d>(&answer.value)) return *point;
    return std::nullopt;
}

/// CMDECHO 0 silences commands that are run by commands.
bool showsPrompts(const EdState& state) {
    return !state.input.isNested() ||
           state.variables.get(L"CMDECHO") != VariableValue(Adesk::Int16{0});
}

/// A click answers with its point, a key that ends an answer with that; nothing when neither is for
/// the host.
std::optional<InputAnswer> meaningOf(InputAnswer answer, MouseAndKeys& hands) {
    if (const auto* click = std::get_if<MouseClick>(&answer.value)) {
        const auto point = hands.click(*click);
        if (!point) return std::nullopt;
        return InputAnswer{.value = *point, .clicked = click->held};
    }
    if (const auto* press = std::get_if<KeyPress>(&answer.value)) {
        switch (hands.press(*press)) {
        case KeyMeaning::nothing:
            return std::nullopt;
        case KeyMeaning::enter:
            return InputAnswer{.value = hands.takeTyped()};
        case KeyMeaning::escape:
            return InputAnswer{.value = EscapeKey{}};
        }
    }
    return answer;
}

InputAnswer nextAnswer(EdState& state, bool word) {
    for (;;) {
        InputAnswer next = word ? state.input.nextWord() : state.input.nextLine();
        if (auto answer = meaningOf(std::move(next), state.hands)) return std::move(*answer);
    }
}

} // namespace

InputAnswer ask(const ACHAR* prompt, bool word) {
    EdState& state = EdState::current();
    const bool shows = showsPrompts(state);
    if (shows && prompt != nullptr) state.output.print(prompt);
    InputAnswer answer = nextAnswer(state, word);
    if (shows && !answer.shown) state.output.print(shownText(answer));
    return answer;
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
    takeRules();
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
    const auto convert = [&](const InputAnswer& answer) -> Converted<AcGePoint3d> {
        const auto value = pointOf(answer, base);
        if (value) return *value;
        return Refusal{L"\nA point is needed, for example 100,50 or @20<45."};
    };
    AcGePoint3d point;
    const int answered = askUntilValid(prompt, rules, convert, point);
    if (answered != RTNORM) return answered;
    result[0] = point.x;
    result[1] = point.y;
    result[2] = point.z;
    return RTNORM;
}
