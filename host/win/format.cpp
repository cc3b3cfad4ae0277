#include "win/format.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <cwchar>
#include <string_view>

#include "win/code_page.h"

namespace headless {
namespace {

/// How wide the value of a directive is, as its prefix says.
enum class Size { none, hh, h, l, ll, w };

/// One `%` directive.
struct Directive {
    bool left = false, sign = false, blank = false, alternate = false, zero = false;
    int width = 0;
    int precision = -1;
    Size size = Size::none;
    char conversion = '\0';
};

unsigned bytesOf(Size size) {
    if (size == Size::l) return sizeof(long);
    if (size == Size::ll) return sizeof(long long);
    return sizeof(int);
}

std::int64_t signedOf(std::uint64_t value, Size size) {
    if (size == Size::h) return static_cast<std::int16_t>(value);
    if (bytesOf(size) == sizeof(std::int32_t)) return static_cast<std::int32_t>(value);
    return static_cast<std::int64_t>(value);
}

std::uint64_t unsignedOf(std::uint64_t value, Size size) {
    if (size == Size::h) return static_cast<std::uint16_t>(value);
    return bytesOf(size) == sizeof(std::uint32_t) ? static_cast<std::uint32_t>(value) : value;
}

std::string digitsOf(std::uint64_t value, unsigned base, const char* alphabet) {
    std::string digits;
    for (; value != 0; value /= base)
        digits.push_back(alphabet[value % base]);
    std::reverse(digits.begin(), digits.end());
    return digits;
}

/// Reads a format directive by directive and writes the text.
template <class CharT>
class Formatter {
public:
    using View = std::basic_string_view<CharT>;

    Formatter(const CharT* format, FormatArguments& arguments)
        : at_(format), arguments_(arguments) {}

    std::basic_string<CharT> run() {
        while (*at_ != 0) {
            if (*at_ != '%') {
                text_.push_back(*at_++);
                continue;
            }
            ++at_;
            write(parse());
        }
        return std::move(text_);
    }

private:
    [[nodiscard]] bool take(char character) {
        if (*at_ != static_cast<CharT>(character)) return false;
        ++at_;
        return true;
    }

    Directive parse() {
        Directive directive;
        parseFlags(directive);
        directive.width = parseNumber();
        if (directive.width < 0) {
            directive.left = true;
            directive.width = -directive.width;
        }
        if (take('.')) directive.precision = parseNumber();
        directive.size = parseSize();
        if (*at_ != 0) {
            const CharT letter = *at_++;
            const bool isAscii = letter > 0 && letter < 0x80;
            directive.conversion = isAscii ? static_cast<char>(letter) : '?';
            letter_ = letter;
        }
        return directive;
    }

    void parseFlags(Directive& directive) {
        for (;;) {
            if (take('-')) {
                directive.left = true;
            } else if (take('+')) {
                directive.sign = true;
            } else if (take(' ')) {
                directive.blank = true;
            } else if (take('#')) {
                directive.alternate = true;
            } else if (take('0')) {
                directive.zero = true;
            } else {
                return;
            }
        }
    }

    int parseNumber() {
        // No text needs more, and no value can ask for memory without bound.
        constexpr int kLimit = 1'000'000;
        if (take('*')) {
            const auto value = signedOf(arguments_.integer(sizeof(int)), Size::none);
            return static_cast<int>(std::clamp<std::int64_t>(value, -kLimit, kLimit));
        }
        int number = 0;
        for (; *at_ >= '0' && *at_ <= '9'; ++at_) {
            number = std::min(number * 10 + static_cast<int>(*at_ - '0'), kLimit);
        }
        return number;
    }

    Size parseSize() {
        if (take('I')) {
            if (at_[0] == '6' && at_[1] == '4') {
                at_ += 2;
                return Size::ll;
            }
            if (at_[0] == '3' && at_[1] == '2') {
                at_ += 2;
                return Size::none;
            }
            return Size::ll; // Pointer-sized.
        }
        if (take('h')) return take('h') ? Size::hh : Size::h;
        if (take('l')) return take('l') ? Size::ll : Size::l;
        if (take('j') || take('z') || take('t')) return Size::ll;
        if (take('w')) return Size::w;
        return take('L') ? Size::l : Size::none;
    }

    void write(const Directive& directive) {
        switch (directive.conversion) {
        case '\0':
            return;
        case 'd':
        case 'i':
        case 'u':
        case 'o':
        case 'x':
        case 'X':
            return writeInteger(directive);
        case 'a':
        case 'A':
        case 'e':
        case 'E':
        case 'f':
        case 'F':
        case 'g':
        case 'G':
            return writeReal(directive);
        case 's':
        case 'S':
            return writeString(directive);
        case 'c':
        case 'C':
            return writeCharacter(directive);
        case 'p':
            return writePointer(directive);
        default:
            text_.push_back(letter_);
        }
    }

    void writeInteger(const Directive& directive) {
        const std::uint64_t passed = arguments_.integer(bytesOf(directive.size));
        const char letter = directive.conversion;
        std::string sign;
        std::uint64_t magnitude = unsignedOf(passed, directive.size);
        if (letter == 'd' || letter == 'i') {
            const std::int64_t value = signedOf(passed, directive.size);
            magnitude = value < 0 ? 0 - static_cast<std::uint64_t>(value)
                                  : static_cast<std::uint64_t>(value);
            sign = value < 0 ? "-" : positiveSign(directive);
        }
        const unsigned base = letter == 'o' ? 8 : letter == 'x' || letter == 'X' ? 16 : 10;
        std::string digits =
            digitsOf(magnitude, base, letter == 'X' ? "0123456789ABCDEF" : "0123456789abcdef");
        const std::size_t least =
            directive.precision < 0 ? 1 : static_cast<std::size_t>(directive.precision);
        if (digits.size() < least) digits.insert(0, least - digits.size(), '0');
        if (directive.alternate && base == 8 && !digits.starts_with('0')) digits.insert(0, "0");
        if (directive.alternate && base == 16 && magnitude != 0) {
            sign = letter == 'X' ? "0X" : "0x";
        }
        writeNumber(directive, sign, digits, directive.zero && directive.precision < 0);
    }

    void writeReal(const Directive& directive) {
        std::string number = formatReal(arguments_.real(), directive.conversion,
                                        directive.precision, directive.alternate);
        std::string sign = positiveSign(directive);
        if (number.starts_with('-')) {
            sign = "-";
            number.erase(0, 1);
        }
        writeNumber(directive, sign, number, directive.zero);
    }

    void writePointer(const Directive& directive) {
        const std::uint64_t value = arguments_.integer(sizeof(void*));
        std::string digits = digitsOf(value, 16, "0123456789ABCDEF");
        digits.insert(0, 2 * sizeof(void*) - digits.size(), '0');
        writeNumber(directive, "", digits, false);
    }

    static std::string positiveSign(const Directive& directive) {
        return directive.sign ? "+" : directive.blank ? " " : "";
    }

    void writeNumber(const Directive& directive, const std::string& sign, std::string digits,
                     bool zeros) {
        const auto width = static_cast<std::size_t>(directive.width);
        const std::size_t length = sign.size() + digits.size();
        if (zeros && !directive.left && length < width) digits.insert(0, width - length, '0');
        const std::string number = sign + digits;
        writePadded(directive, std::basic_string<CharT>(number.begin(), number.end()));
    }

    void writePadded(const Directive& directive, View piece) {
        const auto width = static_cast<std::size_t>(directive.width);
        const std::size_t padding = piece.size() < width ? width - piece.size() : 0;
        const CharT fill = directive.zero && !directive.left ? '0' : ' ';
        if (!directive.left) text_.append(padding, isText(directive) ? fill : CharT(' '));
        text_.append(piece);
        if (directive.left) text_.append(padding, ' ');
    }

    static bool isText(const Directive& directive) {
        return std::strchr("sScC", directive.conversion) != nullptr;
    }

    /// Whether the directive takes wide text.
    static bool isWide(const Directive& directive) {
        switch (directive.size) {
        case Size::l:
        case Size::ll:
        case Size::w:
            return true;
        case Size::h:
        case Size::hh:
            return false;
        default:
            break;
        }
        const bool capital = directive.conversion == 'S' || directive.conversion == 'C';
        return (sizeof(CharT) > 1) != capital;
    }

    void writeString(const Directive& directive) {
        const void* passed = arguments_.pointer();
        std::basic_string<CharT> piece;
        if (passed == nullptr) {
            constexpr std::string_view kNull = "(null)";
            piece.assign(kNull.begin(), kNull.end());
        } else if (isWide(directive)) {
            piece = converted(bounded(static_cast<const wchar_t*>(passed), directive.precision));
        } else {
            piece = converted(bounded(static_cast<const char*>(passed), directive.precision));
        }
        if (directive.precision >= 0) {
            piece.resize(std::min(piece.size(), static_cast<std::size_t>(directive.precision)));
        }
        writePadded(directive, piece);
    }

    void writeCharacter(const Directive& directive) {
        const std::uint64_t passed = arguments_.integer(sizeof(int));
        if (isWide(directive)) {
            const auto character = static_cast<wchar_t>(passed);
            writePadded(directive, converted(std::wstring_view(&character, 1)));
        } else {
            const auto byte = static_cast<char>(passed);
            writePadded(directive, converted(std::string_view(&byte, 1)));
        }
    }

    /// Text up to its NUL; the text need not have one when the precision bounds it.
    template <class Char>
    static std::basic_string_view<Char> bounded(const Char* text, int precision) {
        if (precision < 0) return text;
        std::size_t length = 0;
        while (length < static_cast<std::size_t>(precision) && text[length] != 0)
            ++length;
        return {text, length};
    }

    static std::basic_string<CharT> converted(View text) { return std::basic_string<CharT>(text); }
    template <class Other>
    requires(!std::is_same_v<Other, CharT>) static std::basic_string<CharT> converted(
        std::basic_string_view<Other> text) {
        if constexpr (sizeof(CharT) > 1) {
            return decode(text, 0);
        } else {
            return encode(text, 0);
        }
    }

    const CharT* at_;
    FormatArguments& arguments_;
    std::basic_string<CharT> text_;
    CharT letter_ = 0;
};

} // namespace

std::uint64_t ListArguments::integer(unsigned size) {
    return size == sizeof(std::uint64_t) ? va_arg(list_, std::uint64_t)
                                         : static_cast<std::uint64_t>(va_arg(list_, unsigned));
}

std::uint64_t FormatValue::integer() const {
    switch (kind_) {
    case Kind::real: {
        constexpr double kSafe = 9e18; // Beyond it no integer of 64 bits has the value.
        return std::abs(real_) < kSafe
                   ? static_cast<std::uint64_t>(static_cast<std::int64_t>(real_))
                   : 0;
    }
    case Kind::pointer:
        return reinterpret_cast<std::uintptr_t>(pointer_);
    default:
        return integer_;
    }
}

double FormatValue::real() const {
    return kind_ == Kind::real ? real_ : static_cast<double>(static_cast<std::int64_t>(integer_));
}

std::wstring formatText(const wchar_t* format, FormatArguments& arguments) {
    return format == nullptr ? std::wstring() : Formatter<wchar_t>(format, arguments).run();
}

std::string formatText(const char* format, FormatArguments& arguments) {
    return format == nullptr ? std::string() : Formatter<char>(format, arguments).run();
}

std::wstring formatText(const wchar_t* format, std::va_list list) {
    ListArguments arguments(list);
    return formatText(format, arguments);
}

std::string formatText(const char* format, std::va_list list) {
    ListArguments arguments(list);
    return formatText(format, arguments);
}

} // namespace headless
