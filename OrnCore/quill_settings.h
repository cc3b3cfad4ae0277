// The product's numbered layers, text styles and dimension styles as its configuration file has
// them: a JSON document in UTF-8.
//
// The file's members are arrays of objects: `linetypes`, `layers`, `textStyles`, `dimensionStyles`.
// Lengths are millimetres of the drawing, for dimension styles of the printed sheet.
#pragma once

#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include <afxwin.h>

namespace quill {

/// The pattern of a linetype that a drawing may lack.
struct Linetype {
    CString description;
    std::vector<double> dashes; ///< Above 0 a dash, below 0 a gap, 0 a dot.
};

struct Layer {
    CString name;
    int color = 7; ///< 1 to 255
    CString linetype = L"Continuous";
    int lineWeight = -3; ///< Hundredths of a millimetre; -3 for the host's default.
    bool plots = true;
};

struct TextStyle {
    CString name;
    CString font;    ///< A font file.
    CString bigFont; ///< Empty for none.
    double widthFactor = 1.0;
};

struct DimensionStyle {
    unsigned int textStyle = 0; ///< The code of a text style.
    double scale = 1.0;         ///< Of all the sizes below.
    double textHeight = 3.0;
    double tick = 1.5;
    double originGap = 2.0; ///< Between the measured point and the extension line.
    double beyond = 2.0;    ///< How far extension lines run past the dimension line.
    double textGap = 1.0;
    double spacing = 7.0; ///< Of stacked dimension lines.
    int decimals = 0;
};

/// What all styles of the product are numbered by: scale, text height, kind.
using DimensionKey = std::tuple<int, int, int>;

struct Settings {
    std::map<CString, Linetype> linetypes;
    std::map<unsigned int, Layer> layers;
    std::map<unsigned int, TextStyle> textStyles;
    std::map<DimensionKey, DimensionStyle> dimensionStyles;
};

/// What a file says, or why it says nothing.
struct Reading {
    Settings settings;
    std::optional<CString> problem; ///< One line: where and what.
};

/// Reads a document whole or not at all: an entry with a wrong or a missing member spoils it.
[[nodiscard]] Reading readSettings(const std::string& document);

} // namespace quill
