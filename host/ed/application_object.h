// The program as other programs see it: an application that can be driven by automation.
#pragma once

#include "mfc/win_app.h"

namespace headless {

/// The members of the application that the host has. All are methods without arguments; they do
/// nothing while no drawing is open.
class ApplicationObject : public AutomationObject {
public:
    static constexpr DISPID kZoomAll = 37;
    static constexpr DISPID kZoomExtents = 1000; // this host's own number: call it by name

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
