#include "numbering_command.h"

#include <adslib.h>
#include <dbapserv.h>

#include "asked.h"
#include "numbering.h"
#include "text/string_list.h"

namespace board {
namespace {

AcDbDatabase* drawing() { return acdbHostApplicationServices()->workingDatabase(); }

void number(const CString& layers) {
    const auto method = askedKeyword(L"\nOrder [3/2/1/0] <3>: ", L"3 2 1 0");
    if (!method) return;
    const std::vector<NumberedBoard> boards =
        numberBoards(drawing(), {.layers = kelmor::splitLongString(layers, L",", 0, 0),
                                 .method = _wtoi(*method)});
    acutPrintf(L"\n%d boards numbered.", static_cast<int>(boards.size()));
}

void clear(const CString& layers) {
    const auto numbers = askedText(L"\nLayers of the numbers, joined by commas <the product's>: ");
    if (!numbers) return;
    const int count =
        clearBoardNumbers(drawing(), kelmor::splitLongString(layers, L",", 0, 0), *numbers);
    acutPrintf(L"\n%d numbers cleared.", count);
}

} // namespace

void numberingCommand() {
    const auto wish = askedKeyword(L"\nNumbers of boards [Set/Clear] <Set>: ", L"Set Clear");
    const auto layers =
        wish ? askedText(L"\nLayers of the boards, joined by commas <all>: ") : std::nullopt;
    if (!layers) return;
    if (*wish == L"Clear") return clear(*layers);
    number(*layers);
}

} // namespace board
