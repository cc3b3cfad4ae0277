// The text of a settings (INI) file: what it says, and changes that leave every other byte alone.
//
// A file is sections of lines. `[name]` begins a section, the lines before the first one belong to
// a section without a name; `key = value` is a key, a line without '=' a bare name, `;` begins a
// comment. Blanks around names and values do not count, nor does the case of ASCII letters in
// names. Of sections or keys with one name only the first is found.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "win/profile_encoding.h"

namespace headless {

/// One file in memory, with an index by names. Names asked for are taken without the blanks around
/// them. Changing one value or adding a key costs no new parsing.
class ProfileText {
public:
    /// @param codePage  of a file that is not UTF-16LE with a byte-order mark.
    ProfileText(std::string bytes, unsigned codePage);
    ProfileText(ProfileText&&) = default;
    ProfileText& operator=(ProfileText&&) = default;

    [[nodiscard]] const std::string& bytes() const noexcept { return bytes_; }
    [[nodiscard]] unsigned codePage() const noexcept { return codePage_; }

    /// The value as it is written, quotes included; empty optional when there is no such key or a
    /// bare name instead. Valid until the next change.
    [[nodiscard]] std::optional<std::wstring_view> value(std::wstring_view section,
                                                         std::wstring_view key) const;

    // Lists: each text followed by a NUL. Empty optional when there is no such section.
    [[nodiscard]] std::wstring sectionNames() const;
    [[nodiscard]] std::optional<std::wstring> keyNames(std::wstring_view section) const;
    /// `key=value` and bare names, without comments.
    [[nodiscard]] std::optional<std::wstring> lines(std::wstring_view section) const;

    // Changes. Each answers whether the bytes are different now. New lines end in CR LF.

    /// Keeps the layout of a line that is there. A new key follows the last line of its section
    /// that is not blank, a new section the end of the file.
    bool setValue(std::wstring_view section, std::wstring_view key, std::wstring_view value);
    bool removeKey(std::wstring_view section, std::wstring_view key);
    /// The section with its comments, up to the next one.
    bool removeSection(std::wstring_view section);
    /// Replaces all lines of a section but the blank ones at its end.
    bool setLines(std::wstring_view section, const std::vector<std::wstring_view>& lines);

private:
    enum class LineKind { kBlank, kHeader, kComment, kBare, kKey };
    struct LineText {
        LineKind kind = LineKind::kBlank;
        std::wstring name;
        std::wstring value;
    };
    struct Entry {
        LineText text;
        std::size_t line; ///< Offset of its line.
    };

    // Names in files compare by ASCII letters alone, unlike symbol names.
    struct NameHash {
        std::size_t operator()(std::wstring_view name) const noexcept;
    };
    struct NameEqual {
        bool operator()(std::wstring_view left, std::wstring_view right) const noexcept;
    };
    template <class T>
    using Index = std::unordered_map<std::wstring_view, T*, NameHash, NameEqual>;

    struct Section {
        std::wstring name;
        std::size_t header; ///< Offset of its `[name]`; of the section without one, the beginning.
        std::size_t body;   ///< Offset behind that line.
        std::size_t end;    ///< Offset behind its last line that is not blank.
        std::deque<Entry> entries; ///< Comments too. Growing leaves all where they are, for byKey.
        Index<Entry> byKey;
    };

    static LineText parseLine(std::wstring_view line);

    [[nodiscard]] Section* find(std::wstring_view section) const;
    [[nodiscard]] static Entry* find(const Section& section, std::wstring_view key);
    [[nodiscard]] std::size_t headerAfter(const Section& section) const;

    void parse();
    void addEntry(Section& section, LineText text, std::size_t line);
    void append(std::wstring_view text);
    void insertLine(Section& section, std::wstring_view line);
    bool replaceValue(Section& section, Entry& entry, std::wstring_view value);
    [[nodiscard]] std::optional<LineText> singleEntry(std::string_view bytes) const;
    void moveBehind(Section& section, std::size_t line, std::size_t removed, std::size_t added);

    std::string bytes_;
    unsigned codePage_;
    ProfileEncoding encoding_;
    std::deque<Section> sections_;
    Index<Section> byName_;
};

} // namespace headless
