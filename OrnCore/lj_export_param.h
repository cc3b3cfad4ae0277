// What a table is exported with: its grid of sections.
#pragma once

#include <vector>

#include <afxwin.h>

/// The columns and rows of a table to be drawn, in drawing units, each with a size of its own.
class AFX_EXT_CLASS CLJUniSectGrids {
public:
    /// Gives every column and row a size: lists that are too short are filled up with the default
    /// sizes, lists that are too long are cut.
    void MatchParam();

    int columns = 0;
    int rows = 0;
    double defaultWidth = 1000.0;
    double defaultHeight = 800.0;
    std::vector<double> widths;
    std::vector<double> heights;
};

/// The parameter of the product's drawing of tables.
struct CLJExportParam {
    CLJUniSectGrids grids;
};
