#include "layer_pick_command.h"

#include <adslib.h>

#include "layerpick/pick_layers.h"

namespace board {

void layerPickCommand() {
    constexpr int kLookInside = 1;
    constexpr int kEverything = 0;
    CString layers;
    const CString prompt = L"\nPick an entity of each layer, with Shift to take one out: ";
    if (kelmor::PickLayerByDwg(prompt, layers, kLookInside, kEverything) != 0)
        acutPrintf(L"\nLayers: %s", layers.GetString());
    else
        acutPrintf(L"\nNo layer was chosen.");
}

} // namespace board
