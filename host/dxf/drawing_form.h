// How a drawing file looks: its version, its bytes, its ways of writing codes and line ends.
#pragma once

#include <string>
#include <string_view>

#include "db/dxf_output.h"
#include "dxf/text_encoder.h"

namespace headless {

struct DxfSource;

/// The defaults are those of a new drawing.
struct DrawingForm {
    DrawingVersion version = DrawingVersion::k2018;
    bool binary = false;
    bool oneByteCodes = false;             // binary files up to R12
    bool padded = true;                    // ASCII files: "  0" rather than "0"
    bool handles = true;                   // R12 drawings may do without
    std::string_view lineEnd = "\r\n";     // static; of ASCII files
    std::wstring_view codePage = L"UTF-8"; // as new headers name it
    TextEncoder encoder;

    bool hasSubclasses() const { return version > DrawingVersion::kR12; }
};

/// The form of the file that a drawing was read from.
DrawingForm formOf(const DxfSource& source);

/// The form of a drawing of 2000 with everything of a drawing of R12.
DrawingForm formOfUpgrade(const DxfSource& source);

/// "AC1015" and so on; R12 for older versions and for a file that states none.
DrawingVersion versionNamed(std::string_view name);
std::string_view nameOf(DrawingVersion version);

} // namespace headless
