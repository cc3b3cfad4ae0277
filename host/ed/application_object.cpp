#include "ed/application_object.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "db/state.h"
#include "ed/state.h"
#include "ed/zoom.h"
#include "win/casing.h"

namespace headless {
namespace {

struct Method {
    DISPID id;
    std::wstring_view name;
    Acad::ErrorStatus (*run)(AcDbDatabase&);
};

constexpr std::array kMethods = {
    Method{ApplicationObject::kZoomAll, L"ZoomAll", zoomAll},
    Method{ApplicationObject::kZoomExtents, L"ZoomExtents", zoomExtents},
};

} // namespace

HRESULT ApplicationObject::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count,
                                         LCID /*locale*/, DISPID* ids) {
    if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const auto method = std::ranges::find_if(
        kMethods, [&](const Method& m) { return equalNoCase(m.name, names[0]); });
    if (method == kMethods.end()) return DISP_E_UNKNOWNNAME;
    ids[0] = method->id;
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME; // The methods have no arguments to name.
}

HRESULT ApplicationObject::Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                                  DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* /*exception*/,
                                  UINT* /*badArgument*/) {
    const auto method = std::ranges::find(kMethods, member, &Method::id);
    if (method == kMethods.end() || (flags & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
    if (parameters != nullptr && parameters->cArgs != 0) return DISP_E_BADPARAMCOUNT;
    if (result != nullptr) VariantInit(result);
    if (AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase()) method->run(*db);
    return S_OK;
}

HostApplication::HostApplication() : object_(new ApplicationObject) {
    object_->AddRef();
    setAutomation(object_);
}

HostApplication::~HostApplication() { endAutomation(); }

void HostApplication::endAutomation() {
    setAutomation(nullptr);
    if (object_ != nullptr) object_->Release();
    object_ = nullptr;
}

} // namespace headless

CWinApp* acedGetAcadWinApp() { return &headless::EdState::current().application; }
