// Reads the groups of ASCII drawing files: a line with the code, a line with the value.
#pragma once

#include "dxf/record_scanner.h"

namespace headless {

class AsciiScanner : public RecordScanner {
public:
    AsciiScanner(std::string_view bytes, DxfReadReport& report);

protected:
    bool readTag(DxfTag& tag) override;

private:
    struct Line {
        const char* begin;
        const char* end;   // without the line's end
        std::size_t after; // offset of the next line
        bool ended;        // false when the file ends instead
    };

    /// The line from `offset` on. Fails on lines that are too long.
    bool readLine(std::size_t offset, std::uint32_t number, Line& line);
    bool refuseLongLine(std::uint32_t number);
    /// Parses a code line at the cursor without looking for its end first.
    bool readCode(int& code);
    bool readPaddedCode(int& code);
    bool readCodeSlowly(int& code);
    /// Goes to where groups seem to begin again after a line that is no code.
    bool resynchronise();
    int plausibleGroupsFrom(std::size_t offset) const;

    char lineEnd_ = '\n'; // '\r' in files that know no other
};

/// The line's value as a group code; false for anything but a number that groups may have.
bool parseGroupCode(std::string_view line, int& code);

} // namespace headless
