#include "OrnCore/rw_sys_var.h"

#include <cstdlib>
#include <limits>

#include <aced.h>
#include <adslib.h>

namespace {

bool isShort(int value) {
    using Short = std::numeric_limits<short>;
    return value >= Short::min() && value <= Short::max();
}

/// A variable's value other than a text; RTNONE when there is none.
resbuf read(const wchar_t* name) {
    resbuf buffer = {};
    if (acedGetVar(name, &buffer) != RTNORM) buffer.restype = RTNONE;
    if (buffer.restype == RTSTR) {
        std::free(buffer.resval.rstring);
        buffer.restype = RTNONE;
    }
    return buffer;
}

} // namespace

int rwSysVar::GetVar(const wchar_t* name, int* value) {
    const resbuf buffer = read(name);
    if (value == nullptr) return 0;
    switch (buffer.restype) {
    case RTSHORT:
        *value = buffer.resval.rint;
        return 1;
    case RTLONG:
        *value = buffer.resval.rlong;
        return 1;
    default:
        return 0;
    }
}

int rwSysVar::GetVar(const wchar_t* name, double* value) {
    int integer = 0;
    if (value != nullptr && GetVar(name, &integer) != 0) {
        *value = integer;
        return 1;
    }
    const resbuf buffer = read(name);
    if (value == nullptr || buffer.restype != RTREAL) return 0;
    *value = buffer.resval.rreal;
    return 1;
}

int rwSysVar::GetVar(const wchar_t* name, AcGePoint3d* value) {
    const resbuf buffer = read(name);
    const bool inPlane = buffer.restype == RTPOINT;
    if (value == nullptr || (!inPlane && buffer.restype != RT3DPOINT)) return 0;
    const ads_real* const point = buffer.resval.rpoint;
    value->set(point[0], point[1], inPlane ? 0.0 : point[2]);
    return 1;
}

int rwSysVar::SetVar(const wchar_t* name, int value) {
    resbuf buffer = {};
    if (isShort(value)) {
        buffer.restype = RTSHORT;
        buffer.resval.rint = static_cast<short>(value);
    } else {
        buffer.restype = RTLONG;
        buffer.resval.rlong = value;
    }
    return acedSetVar(name, &buffer) == RTNORM ? 1 : 0;
}
