// The inline codes of multiline text.
#include <algorithm>

#include "db/mtext.h"
#include "db/text_metrics.h"

namespace headless {

namespace {

/// Walks over contents and gathers what is to be read.
class PlainText {
public:
    explicit PlainText(std::wstring_view contents) : rest_(contents) {}

    std::wstring read() {
        while (!rest_.empty()) {
            const wchar_t c = take();
            if (c == L'\\')
                readCode();
            else if (c == L'^')
                readCaret();
            else if (c != L'{' && c != L'}')
                plain_ += c;
        }
        return std::move(plain_);
    }

private:
    wchar_t take() {
        const wchar_t c = rest_.front();
        rest_.remove_prefix(1);
        return c;
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
            plain_ += L'\\';
            return;
        }
        const wchar_t code = take();
        switch (code) {
        case L'P':
        case L'N':
        case L'X':
            plain_ += L'\n';
            break;
        case L'~':
            plain_ += L' ';
            break;
        case L'\\':
        case L'{':
        case L'}':
            plain_ += code;
            break;
        case L'S':
            readStack(argument());
            break;
        // Underline, overline, strike-through: on and off, without an argument.
        case L'L':
        case L'l':
        case L'O':
        case L'o':
        case L'K':
        case L'k':
            break;
        // Alignment, colours, fonts, height, paragraph, slant, tracking, width.
        case L'A':
        case L'C':
        case L'c':
        case L'F':
        case L'f':
        case L'H':
        case L'p':
        case L'Q':
        case L'T':
        case L'W':
            argument();
            break;
        default:
            plain_ += L'\\';
            plain_ += code;
            break;
        }
    }

    /// A fraction: the letters around one of the marks ^ / #, which a backslash makes ordinary.
    void readStack(std::wstring_view stack) {
        bool afterCaret = false;
        for (std::size_t i = 0; i < stack.size(); ++i) {
            const bool escaped = stack[i] == L'\\' && i + 1 < stack.size();
            if (escaped) ++i;
            const wchar_t c = stack[i];
            // The blank behind a caret only keeps it from being a control letter.
            if (!escaped && c == L' ' && afterCaret) continue;
            afterCaret = !escaped && c == L'^';
            plain_ += !escaped && c == L'#' ? L'/' : c;
        }
    }

    /// Control letters: ^I a tab, ^J a line feed, "^ " the caret itself.
    void readCaret() {
        if (rest_.empty()) {
            plain_ += L'^';
            return;
        }
        const wchar_t c = take();
        if (c == L'I')
            plain_ += L'\t';
        else if (c == L'J')
            plain_ += L'\n';
        else if (c == L' ')
            plain_ += L'^';
        else if (c != L'M')
            (plain_ += L'^') += c;
    }

    std::wstring_view rest_;
    std::wstring plain_;
};

} // namespace

std::wstring plainMText(std::wstring_view contents) {
    return shownText(PlainText(contents).read());
}

namespace {

/// How many letters of a paragraph go on one line: all, or up to the last blank that fits, or as
/// many as fit; one at least.
std::size_t fittingLetters(std::wstring_view paragraph, double width) {
    std::size_t blank = 0;
    double reached = 0.0;
    for (std::size_t i = 0; i < paragraph.size(); ++i) {
        if (paragraph[i] == L' ') blank = i;
        reached += letterWidth(paragraph[i]);
        if (reached > width) return blank > 0 ? blank : std::max<std::size_t>(i, 1);
    }
    return paragraph.size();
}

} // namespace

std::vector<std::wstring> brokenLines(std::wstring_view plain, double width) {
    std::vector<std::wstring> lines;
    while (true) {
        const std::size_t end = plain.find(L'\n');
        std::wstring_view paragraph = plain.substr(0, end);
        while (width > 0.0) {
            const std::size_t letters = fittingLetters(paragraph, width);
            if (letters == paragraph.size()) break;
            lines.emplace_back(paragraph.substr(0, letters));
            paragraph.remove_prefix(letters);
            paragraph.remove_prefix(std::min(paragraph.find_first_not_of(L' '), paragraph.size()));
        }
        lines.emplace_back(paragraph);
        if (end == std::wstring_view::npos) return lines;
        plain.remove_prefix(end + 1);
    }
}

} // namespace headless
