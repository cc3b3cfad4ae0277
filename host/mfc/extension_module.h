// Extension modules: how a shared library joins the program's MFC.
#pragma once

#include "mfc/object.h"
#include "win/types.h"

#define AFX_EXT_CLASS __attribute__((visibility("default")))
#define AFX_EXT_API __attribute__((visibility("default")))
#define AFX_EXT_DATA __attribute__((visibility("default")))
#define AFX_CLASS_EXPORT __attribute__((visibility("default")))
#define AFX_API_EXPORT __attribute__((visibility("default")))

/// A module's record. One that is all zeros is not initialised.
struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;
};

/// Initialises a record; FALSE when MFC cannot. A record that is initialised stays as it is.
BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE module);
/// Deletes the libraries of the record's module, of all modules with `all`; a record that is not
/// initialised is left alone.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all = FALSE);

/// A module's place in the chain of resources. MFC deletes it.
class CDynLinkLibrary : public CObject {
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& record, BOOL system = FALSE);
    ~CDynLinkLibrary() override;

    HMODULE m_hModule;
    HMODULE m_hResource;
    BOOL m_bSystem;
};

/// Extension modules share the state of the program.
struct AFX_MODULE_STATE {
    HINSTANCE m_hCurrentInstanceHandle = nullptr;
    HINSTANCE m_hCurrentResourceHandle = nullptr; ///< Null: the program's own.
};

AFX_MODULE_STATE* AfxGetModuleState();
AFX_MODULE_STATE* AfxGetStaticModuleState();
HINSTANCE AfxGetInstanceHandle();
HINSTANCE AfxGetResourceHandle();
void AfxSetResourceHandle(HINSTANCE module);
LPCTSTR AfxGetAppName();

/// Keeps the module state for the scope; there is one, so nothing has to change.
#define AFX_MANAGE_STATE(state) static_cast<void>(state)
