#include "frame/ac_ut_sys_var.h"

#include <cstdlib>
#include <optional>

#include <aced.h>

namespace {

/// The variable's value; nothing when the host has none of that name. A text is the caller's.
std::optional<resbuf> read(const wchar_t* name) {
    resbuf buffer = {};
    if (acedGetVar(name, &buffer) != RTNORM) return std::nullopt;
    return buffer;
}

} // namespace

Acad::ErrorStatus AcUtSysVar::getSysVar(const wchar_t* name, int& value) {
    const auto buffer = read(name);
    if (!buffer) return Acad::eInvalidInput;
    value = buffer->resval.rint;
    return Acad::eOk;
}

Acad::ErrorStatus AcUtSysVar::getSysVar(const wchar_t* name, double& value) {
    const auto buffer = read(name);
    if (!buffer) return Acad::eInvalidInput;
    value = buffer->resval.rreal;
    return Acad::eOk;
}

Acad::ErrorStatus AcUtSysVar::getSysVar(const wchar_t* name, CString& value) {
    const auto buffer = read(name);
    if (!buffer) return Acad::eInvalidInput;
    value = buffer->resval.rstring;
    std::free(buffer->resval.rstring);
    return Acad::eOk;
}

Acad::ErrorStatus AcUtSysVar::getSysVar(const wchar_t* name, AcGePoint2d& value) {
    const auto buffer = read(name);
    if (!buffer) return Acad::eInvalidInput;
    value.set(buffer->resval.rpoint[0], buffer->resval.rpoint[1]);
    return Acad::eOk;
}

Acad::ErrorStatus AcUtSysVar::getSysVar(const wchar_t* name, AcGePoint3d& value) {
    const auto buffer = read(name);
    if (!buffer) return Acad::eInvalidInput;
    const double* point = buffer->resval.rpoint;
    value.set(point[0], point[1], point[2]);
    return Acad::eOk;
}

Acad::ErrorStatus AcUtSysVar::setSysVar(const wchar_t* name, int value) {
    resbuf buffer = {};
    buffer.restype = RTSHORT;
    buffer.resval.rint = static_cast<short>(value);
    return setVar(name, &buffer);
}

Acad::ErrorStatus AcUtSysVar::setSysVar(const wchar_t* name, double value) {
    resbuf buffer = {};
    buffer.restype = RTREAL;
    buffer.resval.rreal = value;
    return setVar(name, &buffer);
}

Acad::ErrorStatus AcUtSysVar::setSysVar(const wchar_t* name, const wchar_t* value) {
    resbuf buffer = {};
    buffer.restype = RTSTR;
    buffer.resval.rstring = const_cast<wchar_t*>(value); // The host only reads it.
    return setVar(name, &buffer);
}

Acad::ErrorStatus AcUtSysVar::setSysVar(const wchar_t* name, const AcGePoint3d& value) {
    resbuf buffer = {};
    buffer.restype = RT3DPOINT;
    double* point = buffer.resval.rpoint;
    point[0] = value.x;
    point[1] = value.y;
    point[2] = value.z;
    return setVar(name, &buffer);
}

Acad::ErrorStatus AcUtSysVar::setSysVar(const wchar_t* name, const AcGePoint2d& value) {
    resbuf buffer = {};
    buffer.restype = RTPOINT;
    buffer.resval.rpoint[0] = value.x;
    buffer.resval.rpoint[1] = value.y;
    return setVar(name, &buffer);
}

Acad::ErrorStatus AcUtSysVar::setVar(const wchar_t* name, const resbuf* value) {
    if (acedSetVar(name, value) == RTNORM) return Acad::eOk;
    // Made for nobody to see: callers try variables that a host may not have.
    CString message;
    message.Format(L"Could not set system variable \"%s\".", name == nullptr ? L"" : name);
    return Acad::eInvalidInput;
}
