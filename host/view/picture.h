// Pictures of a drawing, seen from above.
#pragma once

#include <optional>
#include <string>
#include <variant>

#include "view/picture_format.h"
#include "view/sheet_map.h"

class AcDbDatabase;

namespace headless {

struct PictureOptions {
    PictureFormat format = PictureFormat::kPng;
    /// Pixels; points of 1/72 inch for PDF.
    double width = 1600.0;
    double height = 1200.0;
    /// Empty: all that is drawn, with a margin.
    std::optional<PictureWindow> window;
    /// The name of a sheet, in any case; empty for model space.
    std::wstring layout;
    /// Black with a white foreground instead of white with a black one.
    bool isDark = false;
};

/// What went wrong, in words.
struct PictureFailure {
    std::string reason;
};

/// Draws model space: linetypes, lineweights and colours through layers and references, hatches,
/// texts with the machine's fonts, in draw order. What is off or frozen is left out, what is
/// highlighted is dashed, or striped where it is filled.
[[nodiscard]] std::variant<std::string, PictureFailure> drawPicture(AcDbDatabase& db,
                                                                    const PictureOptions& options);

} // namespace headless
