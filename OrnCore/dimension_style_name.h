// How the product names its dimension styles.
#pragma once

#include <afxwin.h>

namespace orncore {

/// "VANT_100_3" for 100 and 3.
inline CString dimensionStyleName(int first, int second) {
    CString name;
    name.Format(L"VANT_%d_%d", first, second);
    return name;
}

} // namespace orncore
