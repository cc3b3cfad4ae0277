#include "layers_command.h"

#include <adslib.h>
#include <dbapserv.h>

#include "asked.h"
#include "layers_report.h"
#include "text/string_list.h"

namespace board {
namespace {

/// The numbers in a list; what is none is 0, the number of no layer.
std::vector<unsigned int> codesOf(const CString& list) {
    std::vector<unsigned int> codes;
    if (list.CompareNoCase(L"ALL") == 0) return codes;
    for (const CString& piece : kelmor::splitLongString(list, L",", 0, 0))
        codes.push_back(static_cast<unsigned int>(_wtoi(piece)));
    return codes;
}

} // namespace

void layersCommand() {
    const auto list = askedText(L"\nNumbers of layers to make, joined by commas, or ALL <list>: ");
    if (!list) return;
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    const CString report = list->IsEmpty()
                               ? layersReport(listNumberedLayers(db))
                               : layersMadeReport(makeNumberedLayers(db, codesOf(*list)));
    acutPrintf(L"\n%s", report.GetString());
}

} // namespace board
