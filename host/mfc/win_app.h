// The running program.
#pragma once

#include "mfc/object.h"
#include "win/dispatch.h"

/// Something that other programs may drive.
class CCmdTarget : public CObject {
public:
    /// The object through which it is driven, or null when it has none.
    /// @param addRef  the caller gets a reference of its own.
    LPDISPATCH GetIDispatch(BOOL addRef) {
        if (automation_ != nullptr && addRef) automation_->AddRef();
        return automation_;
    }

protected:
    CCmdTarget() = default;
    /// The object stays the caller's.
    void setAutomation(LPDISPATCH object) { automation_ = object; }

private:
    LPDISPATCH automation_ = nullptr;
};

class CWinThread : public CCmdTarget {};

class CWinApp : public CWinThread {};
