#include "ed/application_object.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

#include "db/state.h"
#include "ed/state.h"
#include "ed/zoom.h"
#include "mfc/ole_variant.h"
#include "win/casing.h"
#include "win/safe_array.h"

namespace headless {
namespace {

/// The arguments of a call, counted from 0 in the order they are written.
class Arguments {
public:
    explicit Arguments(const DISPPARAMS* parameters) : parameters_(parameters) {}

    UINT count() const { return parameters_ == nullptr ? 0 : parameters_->cArgs; }
    std::optional<double> number(UINT index) { return noted(index, numberOf(argument(index))); }
    std::optional<AcGePoint3d> point(UINT index) { return noted(index, pointOf(argument(index))); }
    /// Where the call has the argument that was asked for last and is of another kind.
    UINT wrong() const { return count() - 1 - wrong_; }

private:
    // The last argument stands first.
    const VARIANT& argument(UINT index) const { return parameters_->rgvarg[count() - 1 - index]; }

    template <class Value>
    Value noted(UINT index, Value value) {
        if (!value) wrong_ = index;
        return value;
    }

    static std::optional<double> numberOf(const VARIANT& argument) {
        COleVariant value;
        if (VariantChangeType(&value, &argument, 0, VT_R8) != S_OK) return std::nullopt;
        if (!std::isfinite(value.dblVal)) return std::nullopt;
        return value.dblVal;
    }

    static std::optional<AcGePoint3d> pointOf(const VARIANT& argument) {
        COleVariant value;
        if (VariantCopyInd(&value, &argument) != S_OK || (value.vt & VT_ARRAY) == 0)
            return std::nullopt;
        LONG first = 0;
        LONG last = 0;
        const bool ofThree = SafeArrayGetDim(value.parray) == 1 &&
                             SafeArrayGetLBound(value.parray, 1, &first) == S_OK &&
                             SafeArrayGetUBound(value.parray, 1, &last) == S_OK &&
                             last - first == 2;
        if (!ofThree) return std::nullopt;
        AcGePoint3d point;
        for (unsigned int axis = 0; axis < 3; ++axis) {
            const auto coordinate = elementOf(value, first + static_cast<LONG>(axis));
            if (!coordinate) return std::nullopt;
            point[axis] = *coordinate;
        }
        return point;
    }

    static std::optional<double> elementOf(const VARIANT& array, LONG index) {
        COleVariant element;
        const auto kind = static_cast<VARTYPE>(array.vt & ~VT_ARRAY);
        if (kind == VT_VARIANT) {
            if (SafeArrayGetElement(array.parray, &index, &element) != S_OK) return std::nullopt;
        } else {
            if (SafeArrayGetElement(array.parray, &index, &element.llVal) != S_OK)
                return std::nullopt;
            element.vt = kind;
        }
        return numberOf(element);
    }

    const DISPPARAMS* parameters_;
    UINT wrong_ = 0;
};

struct Method {
    DISPID id;
    std::wstring_view name;
    UINT arguments;
    /// Nothing for an argument of another kind.
    std::optional<Acad::ErrorStatus> (*run)(AcDbDatabase&, Arguments&);
};

std::optional<Acad::ErrorStatus> runZoomWindow(AcDbDatabase& db, Arguments& arguments) {
    const auto first = arguments.point(0);
    if (!first) return std::nullopt;
    const auto second = arguments.point(1);
    if (!second) return std::nullopt;
    return zoomWindow(db, *first, *second);
}

std::optional<Acad::ErrorStatus> runZoomCenter(AcDbDatabase& db, Arguments& arguments) {
    const auto center = arguments.point(0);
    if (!center) return std::nullopt;
    const auto height = arguments.number(1);
    if (!height) return std::nullopt;
    return zoomCenter(db, *center, *height);
}

template <Acad::ErrorStatus (*zoom)(AcDbDatabase&)>
std::optional<Acad::ErrorStatus> runPlain(AcDbDatabase& db, Arguments& /*none*/) {
    return zoom(db);
}

constexpr std::array kMethods = {
    Method{ApplicationObject::kZoomAll, L"ZoomAll", 0, runPlain<zoomAll>},
    Method{ApplicationObject::kZoomExtents, L"ZoomExtents", 0, runPlain<zoomExtents>},
    Method{ApplicationObject::kZoomWindow, L"ZoomWindow", 2, runZoomWindow},
    Method{ApplicationObject::kZoomCenter, L"ZoomCenter", 2, runZoomCenter},
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
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME; // Arguments have no names.
}

HRESULT ApplicationObject::Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                                  DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* /*exception*/,
                                  UINT* badArgument) {
    const auto method = std::ranges::find(kMethods, member, &Method::id);
    if (method == kMethods.end() || (flags & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
    Arguments arguments(parameters);
    if (arguments.count() != method->arguments) return DISP_E_BADPARAMCOUNT;
    if (result != nullptr) VariantInit(result);
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr) return S_OK;
    const auto status = method->run(*db, arguments);
    if (status) return *status == Acad::eInvalidInput ? E_INVALIDARG : S_OK;
    if (badArgument != nullptr) *badArgument = arguments.wrong();
    return DISP_E_TYPEMISMATCH;
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
