// Reads what a user types for numbers and points.
#pragma once

#include <optional>
#include <string_view>

#include "ge/matrix3d.h"
#include "ge/point3d.h"

namespace headless {

/// A whole number of at most 16 bits, or nothing.
[[nodiscard]] std::optional<int> parseInteger(std::wstring_view text);

/// A decimal number with an optional exponent, or a fraction: "1/2", "-3-1/4" (minus three and a
/// quarter). Nothing for other text and for numbers out of range.
[[nodiscard]] std::optional<double> parseReal(std::wstring_view text);

/// How the coordinates of a typed point are meant.
struct PointFrame {
    AcGePoint3d last;         // what "@" starts from
    double elevation = 0.0;   // z of a point given by two coordinates
    AcGeMatrix3d worldToUser; // what "*" goes through
};

/// A typed point in user coordinates: "x,y", "x,y,z", "distance<degrees", and each after "@"
/// relative to the last point; "@" alone is the last point. After "*", which may follow "@", they
/// are coordinates of the world. Nothing for other text.
[[nodiscard]] std::optional<AcGePoint3d> parsePoint(std::wstring_view text,
                                                    const PointFrame& frame);

} // namespace headless
