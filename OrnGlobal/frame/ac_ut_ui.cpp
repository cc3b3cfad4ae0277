#include "frame/ac_ut_ui.h"

#include <adslib.h>
#include <dbmain.h>

void AcUtUi::rxErrorMsg(Acad::ErrorStatus es) {
    if (es != Acad::eOk) acutPrintf(L"\nARX ERROR: %s", rxErrorStr(es));
}

void AcUtUi::rxErrorAlert(Acad::ErrorStatus /*es*/) {}

const wchar_t* AcUtUi::rxErrorStr(Acad::ErrorStatus es) { return acadErrorStatusText(es); }
