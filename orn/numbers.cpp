#include "numbers.h"

#include <charconv>
#include <cmath>

namespace orn {

std::optional<std::vector<double>> parseNumbers(std::string_view text, char separator,
                                                std::size_t count) {
    std::vector<double> numbers;
    while (true) {
        const std::string_view part = text.substr(0, text.find(separator));
        double number = 0.0;
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), number);
        if (error != std::errc() || end != part.data() + part.size() || !std::isfinite(number))
            return std::nullopt;
        numbers.push_back(number);
        if (part.size() == text.size()) break;
        text.remove_prefix(part.size() + 1);
    }
    if (numbers.size() != count) return std::nullopt;
    return numbers;
}

} // namespace orn
