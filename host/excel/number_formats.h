// Number formats as files number them, and what they show.
#pragma once

#include <string>
#include <string_view>

namespace headless::excel {

/// The code of a format that files name by number alone; "General" for a number that is none.
[[nodiscard]] std::string_view builtInNumberFormat(int id);

/// True when numbers show as dates or times.
[[nodiscard]] bool showsDates(std::string_view numberFormat);
/// True when they show as days of the calendar, perhaps with a time.
[[nodiscard]] bool showsDays(std::string_view numberFormat);

} // namespace headless::excel
