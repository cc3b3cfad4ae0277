// The program as other programs see it: an application that can be driven by automation.
#pragma once

#include "mfc/win_app.h"

namespace headless {

/// The members of the application that the host has. All are methods, which do nothing while no
/// drawing is open: ZoomAll(), ZoomExtents(), ZoomWindow(lowerLeft, upperRight) and
/// ZoomCenter(center, height). Points are arrays of three numbers, in world coordinates.
/// DISP_E_BADPARAMCOUNT; DISP_E_TYPEMISMATCH, naming the first argument that is no such value;
/// E_INVALIDARG for a height that is not above 0.
class ApplicationObject : public AutomationObject {
public:
    static constexpr DISPID kZoomAll = 37;
    // This host's own numbers: call them by name.
    static constexpr DISPID kZoomExtents = 1000;
    static constexpr DISPID kZoomWindow = 1001;
    static constexpr DISPID kZoomCenter = 1002;

    HRESULT GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                   VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;
};

class HostApplication : public CWinApp {
public:
    HostApplication();
    ~HostApplication() override;

    /// Gives up the automation object, as of a program that cannot be driven.
    void endAutomation();
    /// References that the application itself holds.
    std::size_t ownReferences() const { return object_ == nullptr ? 0 : 1; }

private:
    ApplicationObject* object_;
};

} // namespace headless

/// The running program; never null.
CWinApp* acedGetAcadWinApp();
