// The texts of a table, found by the cells they stand in.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include <afxwin.h>
#include <dbents.h>
#include <dbidar.h>

#include "OrnCore/box_tree.h"

namespace table {

/// A text as a cell takes it.
struct CellText {
    CString text;
    AcGePoint3d middle; // of the base line; of all lines when there are several
    int horizontal;     // AcDb::TextHorzMode
    int vertical;       // AcDb::TextVertMode
    int color;          // colour index
    AcDbObjectId style;
    double height;
    double widthFactor;
};

/// Reads the single-line texts of a list, and takes everything else out of it.
[[nodiscard]] std::vector<CellText> readTexts(AcArray<AcDbObjectId>& ids);

/// A single-line or multiline text as a cell takes it; multiline text without its codes, lines
/// parted by line feeds. Nothing for other entities.
[[nodiscard]] std::optional<CellText> cellText(const AcDbEntity& entity);

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
