// A module's string resources, read from a resource script.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "win/types.h"

namespace headless {

/// The strings of all STRINGTABLE blocks of a script. Everything else in the script is passed over.
class StringTable {
public:
    StringTable() = default;

    /// Reads a script in UTF-8. Names of strings are numbers or symbols that a #define of the
    /// script, or of a header it includes by a name in quotes, gives a number; strings without
    /// one are left out.
    ///
    /// @param folder  where included headers are looked for.
    static StringTable parse(std::string_view script, const std::string& folder);

    /// Reads the script at `path`; a missing file is an empty table.
    static StringTable read(const std::string& path);

    /// The text of a string; empty optional when the table has none.
    [[nodiscard]] std::optional<std::wstring_view> find(UINT id) const;

private:
    std::map<UINT, std::wstring> strings_;
};

} // namespace headless
