#include "OrnCore/zel_cmd.h"

#include <acdocman.h>
#include <acedCmdNF.h>
#include <adslib.h>

int CZelCmd::Run(const CString& command, const std::vector<CString>& answers) {
    resbuf* const chain = acutBuildList(RTSTR, static_cast<LPCTSTR>(command), RTNONE);
    resbuf* last = chain;
    for (const CString& answer : answers) {
        last->rbnext = acutBuildList(RTSTR, static_cast<LPCTSTR>(answer), RTNONE);
        last = last->rbnext;
    }
    const int result = acedCmdS(chain);
    acutRelRb(chain);
    return result;
}

int CZelCmd::ExecuteCommand(const wchar_t* line) {
    AcApDocument* const document = acDocManager->curDocument();
    if (line == nullptr || document == nullptr) return RTERROR;
    CString typed(line);
    if (typed.IsEmpty() || typed[typed.GetLength() - 1] != L'\n') typed += L'\n';
    return acDocManager->sendStringToExecute(document, typed) == Acad::eOk ? RTNORM : RTERROR;
}

int CZelCmd::ZoomExtents() { return Run(L"_.ZOOM", {L"_E"}); }
