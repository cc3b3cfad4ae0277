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

} // namespace

int rwSysVar::GetVar(const wchar_t* name, int* value) {
    resbuf buffer = {};
    if (value == nullptr || acedGetVar(name, &buffer) != RTNORM) return 0;
    switch (buffer.restype) {
    case RTSHORT:
        *value = buffer.resval.rint;
        return 1;
    case RTLONG:
        *value = buffer.resval.rlong;
        return 1;
    case RTSTR:
        std::free(buffer.resval.rstring);
        return 0;
    default:
        return 0;
    }
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
