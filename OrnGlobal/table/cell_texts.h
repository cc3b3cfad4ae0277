// The texts of a table, found by the cells they stand in.
#pragma once

#include <span>
#include <vector>

#include <afxwin.h>
#include <dbents.h>
#include <dbidar.h>

#include "OrnCore/box_tree.h"

namespace table {

/// A single-line text as a cell takes it.
struct CellText {
    CString text;
    AcGePoint3d middle; // of the base line
    int horizontal;     // AcDb::TextHorzMode
    int vertical;       // AcDb::TextVertMode
    int color;          // colour index
    AcDbObjectId style;
    double height;
    double widthFactor;
};

/// Reads the texts of a list, and takes everything else out of it.
[[nodiscard]] std::vector<CellText> readTexts(AcArray<AcDbObjectId>& ids);

class CellTexts {
public:
    explicit CellTexts(std::vector<CellText> texts);

    /// What stands in a closed outline.
    struct Content {
        CString text;   // the texts joined as they are, in the order of the list
        int index = -1; // of the last of them; -1 for none
    };
    [[nodiscard]] Content in(const AcGePoint3dArray& outline) const;
    [[nodiscard]] const CellText& at(int index) const {
        return texts_[static_cast<std::size_t>(index)];
    }

private:
    std::vector<CellText> texts_;
    orncore::BoxTree places_;
};

} // namespace table
