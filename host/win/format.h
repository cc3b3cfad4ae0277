// printf as the platform's C run time does it.
//
// In a wide format %s and %c take wide text and %S and %C narrow text, in a narrow format the other
// way round; h, l and w before the letter say which regardless. The run time is the one the
// platform's release 20 is built on: exponents have three digits, exact ties round away from zero,
// infinity is 1.#INF.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <span>
#include <string>
#include <type_traits>

namespace headless {

/// Where a format takes its values from, one after the other.
class FormatArguments {
public:
    virtual ~FormatArguments() = default;
    /// An integer that was passed as one of `size` bytes.
    virtual std::uint64_t integer(unsigned size) = 0;
    virtual double real() = 0;
    virtual const void* pointer() = 0;
};

/// The values of a variable argument list. The list is used up.
class ListArguments final : public FormatArguments {
public:
    explicit ListArguments(std::va_list list) { va_copy(list_, list); }
    ~ListArguments() override { va_end(list_); }
    ListArguments(const ListArguments&) = delete;
    ListArguments& operator=(const ListArguments&) = delete;

    std::uint64_t integer(unsigned size) override;
    double real() override { return va_arg(list_, double); }
    const void* pointer() override { return va_arg(list_, const void*); }

private:
    std::va_list list_;
};

/// A value together with its kind.
class FormatValue {
public:
    template <class T>
    requires std::is_arithmetic_v<T> || std::is_enum_v<T> FormatValue(T value) {
        if constexpr (std::is_floating_point_v<T>) {
            real_ = static_cast<double>(value);
            kind_ = Kind::real;
        } else {
            // Sign-extended, so that a format naming a wider integer than was passed shows it
            // right.
            integer_ = static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
        }
    }
    FormatValue(const void* value) : pointer_(value), kind_(Kind::pointer) {}

    [[nodiscard]] std::uint64_t integer() const;
    [[nodiscard]] double real() const;
    /// Null when the value is not a pointer, so that a format naming text by mistake does no harm.
    [[nodiscard]] const void* pointer() const { return pointer_; }

private:
    enum class Kind { integer, real, pointer };

    std::uint64_t integer_ = 0;
    double real_ = 0;
    const void* pointer_ = nullptr;
    Kind kind_ = Kind::integer;
};

/// Values with their kinds; missing ones are zero. What a wrong format makes undefined elsewhere is
/// merely a wrong text here.
class ValueArguments final : public FormatArguments {
public:
    /// `values` must outlive the arguments.
    explicit ValueArguments(std::span<const FormatValue> values) : values_(values) {}

    std::uint64_t integer(unsigned /*size*/) override { return take().integer(); }
    double real() override { return take().real(); }
    const void* pointer() override { return take().pointer(); }

private:
    FormatValue take() {
        if (values_.empty()) return FormatValue(0);
        const FormatValue value = values_.front();
        values_ = values_.subspan(1);
        return value;
    }

    std::span<const FormatValue> values_;
};

/// The text of a format and its values; empty for a null format.
[[nodiscard]] std::wstring formatText(const wchar_t* format, FormatArguments& arguments);
[[nodiscard]] std::string formatText(const char* format, FormatArguments& arguments);

/// The text of a format and a variable argument list.
[[nodiscard]] std::wstring formatText(const wchar_t* format, std::va_list list);
[[nodiscard]] std::string formatText(const char* format, std::va_list list);

/// A real number as one conversion writes it, sign included, width and flags not.
///
/// @param conversion  one of a, A, e, E, f, F, g, G.
/// @param precision   negative for the default of 6.
/// @param alternate   the flag '#'.
[[nodiscard]] std::string formatReal(double value, char conversion, int precision, bool alternate);

} // namespace headless
