#include "clean_command.h"

#include <adslib.h>
#include <dbapserv.h>

#include "asked.h"
#include "clean.h"

namespace board {

void cleanCommand() {
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    const auto wish =
        askedKeyword(L"\nBlocks added by commands [Mark/Clear] <Mark>: ", L"Mark Clear");
    if (!wish) return;
    if (*wish == L"Clear") {
        acutPrintf(L"\n%s", cleaningReport(clearAddedBlocks(db)).GetString());
    } else {
        markBlocks(db);
        acutPrintf(L"\nMarked: what is added from here on can be cleared.");
    }
}

} // namespace board
