#include "db/mtext_parser.h"

#include <cmath>
#include <cwchar>
#include <numbers>

#include "db/text_metrics.h"

namespace headless {
namespace {

/// The number at the start of a text; 0 when there is none.
double numberOf(std::wstring_view text) { return std::wcstod(std::wstring(text).c_str(), nullptr); }

/// "Arial|b1|i0|c134|p2": a family and its style.
FontRequest familyOf(std::wstring_view argument) {
    FontRequest font;
    font.typeface = argument.substr(0, argument.find(L'|'));
    font.bold = argument.find(L"|b1") != std::wstring_view::npos;
    font.italic = argument.find(L"|i1") != std::wstring_view::npos;
    return font;
}

/// Walks over contents and gathers runs.
class MTextParser {
public:
    MTextParser(std::wstring_view contents, const MTextFormat& format)
        : rest_(contents), format_(format) {}

    std::vector<MTextParagraph> parse() {
        while (!rest_.empty()) {
            const wchar_t c = take();
            if (c == L'\\')
                readCode();
            else if (c == L'^')
                readCaret();
            else if (c == L'{')
                outer_.push_back(format_);
            else if (c == L'}')
                leaveBraces();
            else
                add(c);
        }
        endRun();
        return std::move(paragraphs_);
    }

private:
    wchar_t take() {
        const wchar_t c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    void add(wchar_t letter) { letters_ += letter; }

    /// What was gathered gets the look it was gathered in.
    void endRun() {
        if (letters_.empty()) return;
        paragraphs_.back().push_back({shownText(letters_), {}, 0, format_});
        letters_.clear();
    }

    void endParagraph() {
        endRun();
        paragraphs_.emplace_back();
    }

    void leaveBraces() {
        if (outer_.empty()) return;
        endRun();
        format_ = std::move(outer_.back());
        outer_.pop_back();
    }

    /// The text up to the semicolon that ends a code, which is taken too. A code that is never
    /// ended is no code: nothing is taken.
    std::wstring_view argument() {
        const std::size_t end = rest_.find(L';');
        if (end == std::wstring_view::npos) return {};
        const std::wstring_view text = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        return text;
    }

    void readCode() {
        if (rest_.empty()) {
            add(L'\\');
            return;
        }
        const wchar_t code = take();
        switch (code) {
        case L'P':
        case L'N':
        case L'X':
            endParagraph();
            break;
        case L'~':
            add(L' ');
            break;
        case L'\\':
        case L'{':
        case L'}':
            add(code);
            break;
        case L'S':
            readStack(argument());
            break;
        default:
            if (!readStroke(code) && !readLook(code)) {
                add(L'\\');
                add(code);
            }
        }
    }

    /// Underline, overline, strike-through: on and off, without an argument.
    bool readStroke(wchar_t code) {
        endRun();
        switch (code) {
        case L'L':
        case L'l':
            format_.underlined = code == L'L';
            return true;
        case L'O':
        case L'o':
            format_.overlined = code == L'O';
            return true;
        case L'K':
        case L'k':
            format_.struckThrough = code == L'K';
            return true;
        default:
            return false;
        }
    }

    bool readLook(wchar_t code) {
        // Alignment within a line (A) and paragraph settings (p) do not change the letters.
        if (std::wcschr(L"ACcFfHpQTW", code) == nullptr) return false;
        const std::wstring_view value = argument();
        if (!value.empty()) changeLook(code, value);
        return true;
    }

    void changeLook(wchar_t code, std::wstring_view value) {
        const double number = numberOf(value);
        switch (code) {
        case L'H':
            if (number > 0.0)
                format_.height = value.ends_with(L'x') ? format_.height * number : number;
            break;
        case L'W':
            if (number > 0.0) format_.widthFactor = number;
            break;
        case L'T':
            if (number > 0.0) format_.tracking = number;
            break;
        case L'Q':
            format_.oblique = number * std::numbers::pi / 180.0;
            break;
        case L'f':
            format_.font = familyOf(value);
            break;
        case L'F':
            format_.font = {std::wstring(value.substr(0, value.find(L'|'))), {}, false, false};
            break;
        case L'C':
            format_.color = colorOf(number);
            break;
        case L'c':
            format_.color = trueColorOf(number);
            break;
        default:
            break;
        }
    }

    static std::optional<AcCmEntityColor> colorOf(double index) {
        if (!(index >= 0.0 && index <= 256.0)) return std::nullopt;
        AcCmEntityColor color;
        color.setColorIndex(static_cast<Adesk::UInt16>(index));
        return color;
    }

    /// Blue, green and red from the highest byte down.
    static std::optional<AcCmEntityColor> trueColorOf(double value) {
        constexpr double kWhite = 0xFFFFFF;
        if (!(value >= 0.0 && value <= kWhite)) return std::nullopt;
        const auto bytes = static_cast<std::uint32_t>(value);
        AcCmEntityColor color;
        color.setRGB(static_cast<Adesk::UInt8>(bytes), static_cast<Adesk::UInt8>(bytes >> 8),
                     static_cast<Adesk::UInt8>(bytes >> 16));
        return color;
    }

    /// A fraction: the letters around one of the marks ^ / #, which a backslash makes ordinary.
    void readStack(std::wstring_view stack) {
        endRun();
        MTextRun run{{}, {}, 0, format_};
        for (std::size_t i = 0; i < stack.size(); ++i) {
            const bool escaped = stack[i] == L'\\' && i + 1 < stack.size();
            if (escaped) ++i;
            const wchar_t c = stack[i];
            if (!escaped && run.bar == 0 && (c == L'^' || c == L'/' || c == L'#')) {
                run.bar = c;
                // The blank behind a caret only keeps it from being a control letter.
                if (c == L'^' && stack.substr(i + 1, 1) == L" ") ++i;
            } else {
                (run.isFraction() ? run.lower : run.text) += c;
            }
        }
        if (!run.text.empty() || run.isFraction()) paragraphs_.back().push_back(std::move(run));
    }

    /// Control letters: ^I a tab, ^J a line feed, "^ " the caret itself.
    void readCaret() {
        if (rest_.empty()) {
            add(L'^');
            return;
        }
        const wchar_t c = take();
        if (c == L'I') {
            add(L'\t');
        } else if (c == L'J') {
            endParagraph();
        } else if (c == L' ') {
            add(L'^');
        } else if (c != L'M') {
            add(L'^');
            add(c);
        }
    }

    std::wstring_view rest_;
    MTextFormat format_;
    std::vector<MTextFormat> outer_; // of the braces that are open
    std::wstring letters_;
    std::vector<MTextParagraph> paragraphs_{1};
};

} // namespace

std::vector<MTextParagraph> parseMText(std::wstring_view contents, const MTextFormat& format) {
    return MTextParser(contents, format).parse();
}

std::wstring plainMText(std::wstring_view contents) {
    std::wstring plain;
    for (const MTextParagraph& paragraph : parseMText(contents, {})) {
        for (const MTextRun& run : paragraph) {
            plain += run.text;
            if (run.isFraction()) (plain += run.bar == L'#' ? L'/' : run.bar) += run.lower;
        }
        plain += L'\n';
    }
    plain.pop_back();
    return plain;
}

} // namespace headless
