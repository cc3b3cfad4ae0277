#include "frame/common_undo.h"

#include <acedCmdNF.h>
#include <adslib.h>

namespace {

constexpr const wchar_t* kUndo = L".UNDO";

} // namespace

void Common::UndoBegin() {
    acedCommandS(RTSTR, kUndo, RTSTR, L"BEGIN", RTNONE);
    acedCommandS(RTSTR, kUndo, RTSTR, L"AUTO", RTSTR, L"OFF", RTNONE);
    acedCommandS(RTSTR, kUndo, RTSTR, L"MARK", RTNONE);
}

void Common::UndoEnd() {
    acedCommandS(RTSTR, kUndo, RTSTR, L"BACK", RTNONE);
    acedCommandS(RTSTR, kUndo, RTSTR, L"AUTO", RTSTR, L"ON", RTNONE);
    acedCommandS(RTSTR, kUndo, RTSTR, L"END", RTNONE);
}
