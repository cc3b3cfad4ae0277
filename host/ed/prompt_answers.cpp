#include "ed/prompt_answers.h"

#include <initializer_list>
#include <utility>

#include "db/resbuf.h"
#include "db/state.h"
#include "ed/parse_input.h"
#include "ed/state.h"
#include "ed/user_coordinates.h"
#include "win/format.h"

namespace headless {
namespace {

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

/// Where a typed point is counted from.
PointFrame pointFrame(const double* base) {
    const SystemVariables& variables = EdState::current().variables;
    PointFrame frame;
    frame.elevation = variables.real(L"ELEVATION");
    frame.last =
        base == nullptr ? variables.point(L"LASTPOINT") : AcGePoint3d(base[0], base[1], base[2]);
    const AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    if (db != nullptr) frame.worldToUser = userToWorld(*db).inverse();
    return frame;
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

PromptRules takeRules() { return std::exchange(EdState::current().promptRules, PromptRules{}); }

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

std::optional<int> keywordOf(const InputAnswer& answer, const PromptRules& rules) {
    const auto* text = std::get_if<std::wstring>(&answer.value);
    if (text == nullptr) return std::nullopt;
    if (auto keyword = rules.keywords.match(*text)) return giveText(std::move(*keyword));
    return std::nullopt;
}

std::wstring shownText(const InputAnswer& answer) { return std::visit(TypedForm{}, answer.value); }

std::optional<AcGePoint3d> pointOf(const InputAnswer& answer, const double* base) {
    if (const auto* text = std::get_if<std::wstring>(&answer.value)) {
        return parsePoint(*text, pointFrame(base));
    }
    if (const auto* point = std::get_if<AcGePoint3d>(&answer.value)) return *point;
    return std::nullopt;
}

OfferedKeywords::OfferedKeywords(const Keywords& keywords)
    : former_(std::exchange(EdState::current().offeredKeywords, &keywords)) {}

OfferedKeywords::~OfferedKeywords() { EdState::current().offeredKeywords = former_; }

} // namespace headless
