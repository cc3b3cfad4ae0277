#include "styles_command.h"

#include <adslib.h>
#include <dbapserv.h>

#include "asked.h"
#include "styles.h"
#include "styles_report.h"

namespace board {
namespace {

void tell(const StyleTransfer& transfer, const wchar_t* done) {
    if (transfer.problem.IsEmpty())
        acutPrintf(L"\n%d styles %s.", transfer.count, done);
    else
        acutPrintf(L"\n%s", transfer.problem.GetString());
}

void load() {
    const auto path = askedText(L"\nStyles file <the product's defaults>: ");
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    if (path) tell(loadStyles(db, *path), L"loaded into the drawing");
}

void save() {
    const auto path = askedText(L"\nFile to write: ");
    if (path) tell(saveStyles(*path), L"saved");
}

} // namespace

void stylesCommand() {
    const auto wish =
        askedKeyword(L"\nComponent styles [lIst/Load/Save] <lIst>: ", L"lIst Load Save");
    if (!wish) return;
    if (*wish == L"Load") return load();
    if (*wish == L"Save") return save();
    acutPrintf(L"\n%s", stylesReport(listStyles()).GetString());
}

} // namespace board
