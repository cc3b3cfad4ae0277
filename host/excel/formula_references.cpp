#include "excel/formula_references.h"

#include <optional>

namespace headless::excel {
namespace {

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isNameCharacter(char c) {
    return isLetter(c) || isDigit(c) || c == '_' || c == '.' || c == '\\' || (c & 0x80) != 0;
}

/// Reads a formula from left to right.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    [[nodiscard]] bool atEnd() const { return at_ >= text_.size(); }
    [[nodiscard]] char peek(std::size_t ahead = 0) const {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
    }
    [[nodiscard]] std::size_t position() const { return at_; }
    void moveTo(std::size_t position) { at_ = position; }
    [[nodiscard]] std::string_view since(std::size_t start) const {
        return text_.substr(start, at_ - start);
    }

    /// Past a text in quotes, in which a doubled quote stands for one.
    void skipQuoted(char quote) {
        ++at_;
        while (!atEnd()) {
            if (peek() == quote && peek(1) == quote) {
                at_ += 2;
            } else if (text_[at_++] == quote) {
                return;
            }
        }
    }
    void skipBracketed() {
        int depth = 0;
        do {
            if (peek() == '[') ++depth;
            if (peek() == ']') --depth;
            ++at_;
        } while (depth > 0 && !atEnd());
    }
    template <class Accept>
    std::string_view takeWhile(Accept accept) {
        const std::size_t start = at_;
        while (!atEnd() && accept(peek()))
            ++at_;
        return since(start);
    }
    bool take(char c) {
        if (peek() != c) return false;
        ++at_;
        return true;
    }

    /// A cell, column or row at this place; stays here when there is none.
    std::optional<ReferenceCorner> takeCorner() {
        const std::size_t start = at_;
        ReferenceCorner corner;
        corner.columnFixed = take('$');
        const std::string_view letters = takeWhile(isLetter);
        if (letters.empty()) {
            corner.rowFixed = corner.columnFixed;
            corner.columnFixed = false;
        } else {
            corner.column = columnNumber(letters);
            corner.rowFixed = take('$');
        }
        const std::string_view digits = takeWhile(isDigit);
        constexpr std::size_t kMostDigits = 7;
        for (const char digit : digits.substr(0, kMostDigits))
            corner.row = corner.row * 10 + (digit - '0');
        const bool valid =
            (letters.empty() || corner.column > 0) &&
            (digits.empty() ||
             (corner.row > 0 && corner.row <= kRows && digits.size() <= kMostDigits)) &&
            (corner.column > 0 || corner.row > 0) && !(digits.empty() && corner.rowFixed);
        if (!valid || isNameCharacter(peek())) {
            at_ = start;
            return std::nullopt;
        }
        return corner;
    }

    /// A reference at this place; stays here when there is none.
    std::optional<Reference> takeReference() {
        const std::size_t start = at_;
        Reference reference;
        const auto first = takeCorner();
        if (!first) return std::nullopt;
        reference.first = reference.last = *first;
        const std::size_t afterFirst = at_;
        if (take(':')) {
            const auto last = takeCorner();
            const bool sameKind = last && (last->row == 0) == (first->row == 0) &&
                                  (last->column == 0) == (first->column == 0);
            if (sameKind) {
                reference.last = *last;
                reference.isRange = true;
            } else {
                at_ = afterFirst;
            }
        }
        const bool isCell = first->row > 0 && first->column > 0;
        if ((!isCell && !reference.isRange) || peek() == '(' || peek() == '!') {
            at_ = start;
            return std::nullopt;
        }
        return reference;
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

std::string cornerText(const ReferenceCorner& corner) {
    std::string text;
    if (corner.column > 0) text += (corner.columnFixed ? "$" : "") + columnName(corner.column);
    if (corner.row > 0) text += (corner.rowFixed ? "$" : "") + std::to_string(corner.row);
    return text;
}

std::string referenceText(const Reference& reference) {
    return cornerText(reference.first) +
           (reference.isRange ? ":" + cornerText(reference.last) : std::string());
}

/// The sheet's name when one stands at this place, the mark behind it passed over.
std::string_view takeSheet(Scanner& scanner) {
    const std::size_t start = scanner.position();
    if (scanner.peek() == '\'') {
        scanner.skipQuoted('\'');
    } else {
        scanner.takeWhile(isNameCharacter);
    }
    const std::string_view name = scanner.since(start);
    if (!name.empty() && scanner.take('!')) return name;
    scanner.moveTo(start);
    return {};
}

} // namespace

std::string changeReferences(std::string_view formula,
                             const std::function<bool(Reference&)>& change) {
    std::string changed;
    Scanner scanner(formula);
    while (!scanner.atEnd()) {
        const std::size_t start = scanner.position();
        if (scanner.peek() == '"') {
            scanner.skipQuoted('"');
            changed += scanner.since(start);
            continue;
        }
        if (scanner.peek() == '[') {
            scanner.skipBracketed();
            changed += scanner.since(start);
            continue;
        }
        const std::string_view sheet = takeSheet(scanner);
        if (!sheet.empty()) changed += std::string(sheet) + "!";
        if (auto reference = scanner.takeReference()) {
            reference->sheet = sheet;
            changed += change(*reference) ? referenceText(*reference) : "#REF!";
            continue;
        }
        const std::string_view word = scanner.takeWhile(isNameCharacter);
        if (!word.empty()) {
            changed += word;
        } else if (sheet.empty()) {
            changed += scanner.peek();
            scanner.moveTo(start + 1);
        }
    }
    return changed;
}

std::string copiedFormula(std::string_view formula, int down, int right) {
    const auto move = [&](ReferenceCorner& corner) {
        if (corner.row > 0 && !corner.rowFixed) corner.row += down;
        if (corner.column > 0 && !corner.columnFixed) corner.column += right;
        // What was written must stay on the sheet.
        return corner.row <= kRows && corner.column <= kColumns;
    };
    return changeReferences(formula, [&](Reference& reference) {
        const ReferenceCorner first = reference.first;
        const bool kept = move(reference.first) && move(reference.last);
        return kept && (first.row == 0) == (reference.first.row <= 0) &&
               (first.column == 0) == (reference.first.column <= 0);
    });
}

} // namespace headless::excel
