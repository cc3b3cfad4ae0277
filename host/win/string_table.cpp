#include "win/string_table.h"

#include <charconv>
#include <fstream>
#include <iterator>
#include <set>

#include "win/code_page.h"

namespace headless {
namespace {

enum class TokenKind { end, word, text, mark, defineLine, includeLine };

struct Token {
    TokenKind kind;
    std::string_view raw;   ///< Words, marks, and the rest of a # line.
    std::wstring text = {}; ///< The content of a quoted text.
};

bool isWordCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

/// Cuts a script into tokens.
class Scanner {
public:
    explicit Scanner(std::string_view script) : rest_(script) {
        constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
        if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
    }

    Token next() {
        skipBlanksAndComments();
        if (rest_.empty()) return {TokenKind::end, {}};
        if (rest_[0] == '#') return directive();
        if (rest_[0] == '"') return quoted();
        if (rest_.starts_with("L\"")) {
            rest_.remove_prefix(1);
            return quoted();
        }
        if (isWordCharacter(rest_[0])) return {TokenKind::word, takeWhile(isWordCharacter)};
        return {TokenKind::mark, take(1)};
    }

private:
    std::string_view take(std::size_t count) {
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    template <class Predicate>
    std::string_view takeWhile(Predicate belongs) {
        std::size_t length = 0;
        while (length < rest_.size() && belongs(rest_[length]))
            ++length;
        return take(length);
    }

    std::string_view takeThrough(std::string_view end) {
        const std::size_t at = rest_.find(end);
        return take(at == std::string_view::npos ? rest_.size() : at + end.size());
    }

    void skipBlanksAndComments() {
        for (;;) {
            takeWhile(isBlank);
            if (rest_.starts_with("//")) {
                takeThrough("\n");
            } else if (rest_.starts_with("/*")) {
                takeThrough("*/");
            } else {
                return;
            }
        }
    }

    Token directive() {
        take(1);
        takeWhile([](char c) { return c == ' ' || c == '\t'; });
        const std::string_view word = takeWhile(isWordCharacter);
        const std::string_view line = takeThrough("\n");
        if (word == "define") return {TokenKind::defineLine, line};
        if (word == "include") return {TokenKind::includeLine, line};
        return {TokenKind::mark, word};
    }

    Token quoted() {
        take(1);
        std::wstring text;
        std::string plain;
        const auto flush = [&text, &plain] {
            text += fromUtf8(plain);
            plain.clear();
        };
        while (!rest_.empty()) {
            if (rest_.starts_with("\"\"")) {
                take(2);
                plain.push_back('"');
            } else if (rest_[0] == '"') {
                take(1);
                break;
            } else if (rest_[0] == '\\' && rest_.size() > 1) {
                flush();
                text.push_back(escaped());
            } else {
                plain += take(1);
            }
        }
        flush();
        return {TokenKind::text, {}, text};
    }

    /// The character of an escape; `rest_` begins with its backslash.
    wchar_t escaped() {
        take(1);
        const char letter = rest_[0];
        if (letter >= '0' && letter <= '7') return number(3, 8);
        take(1);
        switch (letter) {
        case 'n':
            return L'\n';
        case 'r':
            return L'\r';
        case 't':
            return L'\t';
        case 'a':
            return L'\a';
        case 'x':
            return number(4, 16);
        default:
            return static_cast<wchar_t>(static_cast<unsigned char>(letter));
        }
    }

    wchar_t number(std::size_t maxDigits, int base) {
        const std::string_view digits = rest_.substr(0, maxDigits);
        unsigned value = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
        take(static_cast<std::size_t>(end - digits.data()));
        return error == std::errc{} ? static_cast<wchar_t>(value) : L'?';
    }

    std::string_view rest_;
};

std::optional<UINT> parseNumber(std::string_view word) {
    const bool isHex = word.starts_with("0x") || word.starts_with("0X");
    if (isHex) word.remove_prefix(2);
    UINT value = 0;
    const auto [end, error] =
        std::from_chars(word.data(), word.data() + word.size(), value, isHex ? 16 : 10);
    if (error != std::errc{} || end == word.data()) return std::nullopt;
    return value; // A suffix like L may follow.
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Collects the symbols and strings of a script.
class Reader {
public:
    explicit Reader(std::string folder) : folder_(std::move(folder)) {}

    void read(std::string_view script) {
        Scanner scanner(script);
        for (Token token = scanner.next(); token.kind != TokenKind::end; token = scanner.next()) {
            if (token.kind == TokenKind::defineLine) {
                define(token.raw);
            } else if (token.kind == TokenKind::includeLine) {
                include(token.raw);
            } else if (token.kind == TokenKind::word && token.raw == "STRINGTABLE") {
                readTable(scanner);
            }
        }
    }

    std::map<UINT, std::wstring> strings;

private:
    void define(std::string_view line) {
        Scanner scanner(line);
        const Token name = scanner.next();
        Token value = scanner.next();
        if (value.kind == TokenKind::mark && value.raw == "(") value = scanner.next();
        if (name.kind != TokenKind::word || value.kind != TokenKind::word) return;
        if (const auto number = numberOf(value.raw)) symbols_[std::string(name.raw)] = *number;
    }

    void include(std::string_view line) {
        const std::size_t open = line.find('"');
        const std::size_t close = line.find('"', open + 1);
        if (open == line.npos || close == line.npos) return;
        const std::string name(line.substr(open + 1, close - open - 1));
        if (!included_.insert(name).second) return;
        read(readFile(folder_ + "/" + name));
    }

    [[nodiscard]] std::optional<UINT> numberOf(std::string_view word) const {
        const auto symbol = symbols_.find(word);
        return symbol != symbols_.end() ? symbol->second : parseNumber(word);
    }

    void readTable(Scanner& scanner) {
        bool inside = false;
        std::optional<UINT> id;
        for (Token token = scanner.next(); token.kind != TokenKind::end; token = scanner.next()) {
            if (token.raw == "BEGIN" || token.raw == "{") {
                inside = true;
            } else if (token.raw == "END" || token.raw == "}") {
                return;
            } else if (inside && token.kind == TokenKind::word) {
                id = numberOf(token.raw);
            } else if (inside && token.kind == TokenKind::text && id) {
                strings.insert_or_assign(*id, std::move(token.text));
                id.reset();
            }
        }
    }

    std::string folder_;
    std::map<std::string, UINT, std::less<>> symbols_;
    std::set<std::string> included_;
};

} // namespace

StringTable StringTable::parse(std::string_view script, const std::string& folder) {
    Reader reader(folder);
    reader.read(script);
    StringTable table;
    table.strings_ = std::move(reader.strings);
    return table;
}

StringTable StringTable::read(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return parse(readFile(path), slash == std::string::npos ? "." : path.substr(0, slash));
}

std::optional<std::wstring_view> StringTable::find(UINT id) const {
    const auto entry = strings_.find(id);
    if (entry == strings_.end()) return std::nullopt;
    return entry->second;
}

} // namespace headless
