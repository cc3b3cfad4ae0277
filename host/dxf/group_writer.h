// Writes groups as the bytes of a drawing file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "db/data_item.h"
#include "dxf/drawing_form.h"

namespace headless {

/// Appends to a buffer, which must outlive it.
class GroupWriter {
public:
    GroupWriter(const DrawingForm& form, std::string& to) : form_(form), to_(to) {}

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
    void code(int code);
    void endValue();
    template <class Number>
    void raw(Number number);
    void binaryInteger(int code, std::int64_t value);

    const DrawingForm& form_;
    std::string& to_;
};

} // namespace headless
