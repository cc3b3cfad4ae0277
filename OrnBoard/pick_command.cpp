#include "pick_command.h"

#include <adslib.h>
#include <dbapserv.h>

#include "asked.h"
#include "pick.h"

namespace board {

void pickCommand() {
    while (const auto point = askedPoint(L"\nPoint to pick the layer at: ")) {
        AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
        for (const Pick& pick : pickLayers(db, {*point}, {.hatches = true})) {
            if (pick.layer.IsEmpty())
                acutPrintf(L"\nNothing there.");
            else
                acutPrintf(L"\nLayer %s", pick.layer.GetString());
        }
    }
}

} // namespace board
