// The product's numbered layers in a drawing.
#pragma once

#include <vector>

#include <afxwin.h>

#include "OrnCore/quill_settings.h"

class AcDbDatabase;

namespace board {

struct NumberedLayer {
    unsigned int code = 0;
    quill::Layer settings; ///< As configured; the drawing's own layer of that name may differ.
    bool inDrawing = false;
};

/// All layers of the product's configuration by number; empty, with a message box, when it cannot
/// be read.
/// @param db  null: no layer is in it.
AFX_EXT_API std::vector<NumberedLayer> listNumberedLayers(AcDbDatabase* db);

struct LayersMade {
    std::vector<NumberedLayer> made;   ///< Those that were missing.
    std::vector<unsigned int> refused; ///< Numbers without a layer.
};

/// Makes the layers of these numbers exist in a drawing.
/// @param codes  empty: all there are.
AFX_EXT_API LayersMade makeNumberedLayers(AcDbDatabase* db, const std::vector<unsigned int>& codes);

} // namespace board
