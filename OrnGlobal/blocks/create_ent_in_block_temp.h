// Temporary copies of what all block references of a drawing show on some layers.
#pragma once

#include <afxwin.h>

#include "layerpick/temporary_entities.h"

/// The copies are entities of the drawing, to be selected and highlighted like others, from the
/// object's construction to its end.
class AFX_EXT_CLASS CCreateEntInBlockTemp {
public:
    /// Copies what the references of the working database show that a user could select.
    /// @param layers  names in any case, joined by ",".
    explicit CCreateEntInBlockTemp(const CString& layers);

private:
    CString layers_;
    layerpick::TemporaryEntities made_;
};
