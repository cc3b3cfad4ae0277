// Reads the groups of binary drawing files: a code of one or two bytes, then the value.
#pragma once

#include "dxf/record_scanner.h"

namespace headless {

class BinaryScanner : public RecordScanner {
public:
    static bool recognises(std::string_view bytes);

    BinaryScanner(std::string_view bytes, DxfReadReport& report);

protected:
    bool readTag(DxfTag& tag) override;

private:
    /// The code's bytes; files up to R12 have one, with 255 before the larger codes.
    bool readCode(int& code);
    bool readValue(int code, DxfTag& tag);
    bool readText(DxfTag& tag);
    bool readChunk(DxfTag& tag);
    template <class Number>
    bool readNumber(Number& number);
    bool cutOff(std::size_t at);

    bool oneByteCodes_ = false;
};

} // namespace headless
