// Measures the boards of a drawing: areas and lengths of polylines and circles in model space.
#pragma once

#include <optional>
#include <vector>

#include <afxwin.h>
#include <dbmain.h>

namespace board {

/// Bounds of one side of a board in drawing units (mm): longer than `above` and not longer than
/// `atMost`, both within the product's tolerances.
struct SideRange {
    double above = 0.0;
    double atMost = 2147483647.0;

    bool isOpen() const { return above == 0.0 && atMost == 2147483647.0; }
};

/// Which outlines are measured. A is the first side of the outer tangent outline, B the second.
struct MeasureFilter {
    std::vector<CString> layers = {}; // any case; empty: all layers
    SideRange a = {};
    SideRange b = {};

    bool filtersSides() const { return !a.isOpen() || !b.isOpen(); }
};

/// One measured outline.
struct Measured {
    AcDbHandle handle = {};
    CString layer = {};
    bool closed = false;
    int vertices = 0;                      // 0 for a circle
    std::optional<double> areaSquareMetre; // an open outline closed by a straight line; none for
                                           // curves that lie in no plane and for meshes
    std::optional<double> length;          // mm; none for meshes
};

/// Sums over the measured outlines of one layer.
struct LayerTotal {
    CString layer;
    int count = 0;
    double areaSquareMetre = 0.0;
    double length = 0.0; // mm
};

struct Measurement {
    std::vector<Measured> polylines; // in drawing order
    std::vector<Measured> circles;   // in drawing order
    std::vector<LayerTotal> layers;  // by name
    /// Coefficient of variation of the areas in percent; none without areas.
    std::optional<double> variation;
};

/// Measures model space.
///
/// @param db      the drawing; null measures nothing.
/// @param filter  bounds on sides let only closed outlines pass; a circle has the sides of the
///                square around it.
/// Errors: entities that cannot be opened are left out.
AFX_EXT_API Measurement measureBoards(AcDbDatabase* db, const MeasureFilter& filter);

} // namespace board
