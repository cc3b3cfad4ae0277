// System variables: named settings of the session and of the current drawing.
//
// Names match in any case. A drawing's variables are those of the working database.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "ge/point2d.h"
#include "ge/point3d.h"
#include "rx/types.h"

struct resbuf;

namespace headless {

/// A variable's value; the kind held tells the variable's type (RTSHORT, RTLONG, RTREAL, RTSTR,
/// RTPOINT, RT3DPOINT).
using VariableValue =
    std::variant<Adesk::Int16, Adesk::Int32, double, std::wstring, AcGePoint2d, AcGePoint3d>;

struct VariableSpec;

/// How an attempt to set a variable ended.
enum class SetOutcome {
    done,
    unknown,
    readOnly,
    wrongType,
    outOfRange,
    badLayer,
    badLinetype,
    badColor,
    badTextStyle,
    noDrawing
};

class SystemVariables {
public:
    /// Nothing for an unknown name, or for a drawing's variable when there is no drawing.
    std::optional<VariableValue> get(std::wstring_view name) const;

    /// Sets a variable as a user may. Integers serve for real variables, 2D points for 3D ones.
    SetOutcome set(std::wstring_view name, const VariableValue& value);

    /// Sets a variable of the session that users may only read. The value must have its type.
    void assign(std::wstring_view name, VariableValue value);

    /// The value of a variable known to be of that type; 0 or the origin when there is no drawing.
    double real(std::wstring_view name) const;
    AcGePoint3d point(std::wstring_view name) const;

private:
    std::map<const VariableSpec*, VariableValue> changed_; // Session variables off their defaults.
};

/// Values of ERRNO, which tells why the last call failed.
enum class HostError : Adesk::Int16 {
    none = 0,
    pickFailed = 7,
    readOnlyVariable = 20,
    outOfRange = 22,
    badLayerName = 25,
    badLinetypeName = 26,
    badColorName = 27,
    badTextStyleName = 28,
    nullResponse = 52
};
void setHostError(HostError error);

} // namespace headless

/// Reads a system variable into `result`; a text is allocated with malloc for the caller, who frees
/// it with free or acutDelString.
/// RTNORM, or RTERROR when there is no such variable.
int acedGetVar(const ACHAR* name, resbuf* result);

/// Sets a system variable. RTERROR for an unknown one or a wrong type; also, with the reason in
/// ERRNO, for a read-only one, a value out of range and a name that the drawing does not have.
int acedSetVar(const ACHAR* name, const resbuf* value);
