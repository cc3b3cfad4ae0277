// An application that answers its start with an error.
#include "product_module.h"

extern "C" unsigned acrxGetApiVersion() { return 0x140000; }

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* /*id*/) {
    return message == AcRx::kInitAppMsg ? AcRx::kRetError : AcRx::kRetOK;
}
