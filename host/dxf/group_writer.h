// Writes groups as the bytes of a drawing file.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "db/data_item.h"
#include "dxf/drawing_form.h"
#include "dxf/group_codes.h"

namespace headless {

/// Appends to a buffer, which must outlive it.
class GroupWriter {
public:
    GroupWriter(const DrawingForm& form, std::string& to);

    void text(int code, std::wstring_view value);
    /// Bytes that stand in the file as they are.
    void name(int code, std::string_view value);
    void real(int code, double value);
    /// A number of the kind that the code announces.
    void integer(int code, std::int64_t value);
    /// Codes `code`, `code` + 10 and + 20.
    void point(int code, const AcGePoint3d& value);
    void handle(int code, std::uint64_t value);
    /// In pieces of at most 127 bytes.
    void chunk(int code, std::string_view value);

    void tag(const DxfOutTag& tag);
    /// A value of an application's data; an object's id becomes its handle.
    void item(const DataItem& item);

    std::string& buffer() { return to_; }
    const DrawingForm& form() const { return form_; }

private:
    /// The line with a group code of ASCII files.
    struct CodeLine {
        std::array<char, 7> bytes;
        std::uint8_t length;
    };

    // Put a line, or its end, at `to`, where there is more room than they need; they answer where
    // it ends.
    char* putCodeLine(int code, char* to) const;
    char* putAnyCodeLine(int code, char* to) const;
    char* putLineEnd(char* to) const;

    void code(int code);
    void endValue();
    template <class Number>
    void raw(Number number);
    void binaryInteger(int code, std::int64_t value);

    const DrawingForm& form_;
    std::string& to_;
    std::array<CodeLine, kLastGroupCode - kFirstGroupCode + 1> codeLines_;
};

} // namespace headless
