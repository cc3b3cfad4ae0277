// Lists of numbers in arguments.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace orn {

/// The numbers between the separators; empty unless there are exactly `count` finite ones.
[[nodiscard]] std::optional<std::vector<double>> parseNumbers(std::string_view text, char separator,
                                                              std::size_t count);

} // namespace orn
