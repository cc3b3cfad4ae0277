// Tables as single objects: a grid of cells with what it looks like in an anonymous block.
#pragma once

#include "db/block_reference.h"

/// A reference to the block that draws the table. The cells themselves stay in the table's record
/// and are neither read nor changed: a table that is scaled shows its block larger, while its rows
/// and columns state the heights and widths that they had.
///
/// The block's x axis runs along the table's direction, which counts before the rotation of the
/// reference. Only the drawing that a table was read into can hold it: clones for another one are
/// refused with eNotApplicable.
class AcDbTable : public AcDbBlockReference {
public:
    ACRX_DECLARE_MEMBERS(AcDbTable);

    AcDbTable() = default;

    /// Along the rows, a unit vector in world coordinates.
    AcGeVector3d direction() const;

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
};
