// Entry points of the module: what the platform calls when it loads and unloads it.
#include <aced.h>
#include <afxdllx.h>
#include <afxwin.h>
#include <dbapserv.h>
#include <rxregsvc.h>

#include "blocks_command.h"
#include "clean.h"
#include "clean_command.h"
#include "layer_pick_command.h"
#include "layers_command.h"
#include "measure_command.h"
#include "numbering_command.h"
#include "pick_command.h"
#include "styles_command.h"
#include "tables_command.h"

namespace {

constexpr int kApiVersion = 0x140000; // release 20
constexpr const wchar_t* kCommandGroup = L"ORNBOARD";

struct Command {
    const wchar_t* name;
    void (*run)();
};

constexpr Command kCommands[] = {
    {L"BOARDAREA", board::measureCommand},     {L"BOARDBLOCK", board::blocksCommand},
    {L"BOARDCLEAN", board::cleanCommand},      {L"BOARDLAYERS", board::layersCommand},
    {L"BOARDNUMBER", board::numberingCommand}, {L"BOARDPICK", board::pickCommand},
    {L"BOARDSTYLES", board::stylesCommand},    {L"BOARDTABLE", board::tablesCommand},
    {L"LAYERPICK", board::layerPickCommand},
};

AFX_EXTENSION_MODULE extensionModule;

} // namespace

extern "C" AFX_EXT_API int APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        if (!AfxInitExtensionModule(extensionModule, instance)) return 0;
        new CDynLinkLibrary(extensionModule);
    } else if (reason == DLL_PROCESS_DETACH) {
        AfxTermExtensionModule(extensionModule);
    }
    return 1;
}

extern "C" AFX_EXT_API int acrxGetApiVersion() { return kApiVersion; }

extern "C" AFX_EXT_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message,
                                                       void* application) {
    switch (message) {
    case AcRx::kInitAppMsg:
        acrxUnlockApplication(application);
        acrxRegisterAppMDIAware(application);
        for (const Command& command : kCommands)
            acedRegCmds->addCommand(kCommandGroup, command.name, command.name, ACRX_CMD_MODAL,
                                    command.run);
        break;
    case AcRx::kUnloadAppMsg:
        acedRegCmds->removeGroup(kCommandGroup);
        break;
    case AcRx::kUnloadDwgMsg:
        board::forgetMark(acdbHostApplicationServices()->workingDatabase());
        break;
    default:
        break;
    }
    return AcRx::kRetOK;
}
