#include "measure_command.h"

#include <aced.h>
#include <adslib.h>
#include <dbapserv.h>

#include "measure.h"
#include "measure_report.h"
#include "text/string_list.h"

namespace board {

void measureCommand() {
    ACHAR layers[512];
    const int answer = acedGetString(1, L"\nLayers, joined by commas <all>: ", layers);
    if (answer != RTNORM) return;

    const MeasureFilter filter{.layers = kelmor::splitLongString(layers, L",", 0, 0)};
    AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
    acutPrintf(L"\n%s", measureReport(measureBoards(db, filter)).GetString());
}

} // namespace board
