// Block references turned into what they show.
#pragma once

#include <set>

#include <acestext.h>
#include <afxwin.h>
#include <dbidar.h>

/// What AcUtBlockReferenceExploder takes out of a reference.
class AFX_EXT_CLASS AcUtBlockRefExploderParam {
public:
    /// Only entities whose effective layer is one of these, in any case; empty: all.
    std::set<CString> layers;
    /// References within the block are turned into what they show, too, at any depth.
    bool nested = true;
    /// Clips hide what they hide in the drawing.
    bool clips = true;
    /// Block that the entities come into; null: the current space.
    AcDbObjectId space;
};

/// Turns a block reference into entities in a space that look like it.
///
/// An entity on layer "0" comes onto the layer of the reference that holds it, and what is by-block
/// takes the reference's colour, linetype and lineweight, up through all references. Clipped
/// references lose what they hide: curves are cut exactly, all else stays whole when some of its
/// box is shown. Attributes become texts, which no clip hides. Under uneven scales circles, arcs
/// and polylines with arcs become ellipses and lines.
class AFX_EXT_CLASS AcUtBlockReferenceExploder {
public:
    explicit AcUtBlockReferenceExploder(AcUtBlockRefExploderParam param);

    /// Blocks within blocks can hold more than any machine has room for: references that show more
    /// are refused.
    static constexpr int kMostPieces = 5'000'000;

    /// Appends the new entities to `made`. The reference stays as it is.
    /// @return  what refused to open the reference or the space; eOutOfRange, with a message,
    /// beyond
    ///          kMostPieces; else eOk.
    Acad::ErrorStatus explode(const AcDbObjectId& reference, AcDbObjectIdArray& made);

    /// How many entities of a kind that cannot be copied, or not be scaled as they should, were
    /// left out since the exploder was made.
    int leftOut() const { return leftOut_; }

private:
    AcUtBlockRefExploderParam param_;
    int leftOut_ = 0;
};
