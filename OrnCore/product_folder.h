// Where the product is installed.
#pragma once

#include <afxwin.h>

namespace orncore {

/// The product's folder, without a separator at its end: the parent of the folder that OrnBoard.arx
/// was loaded from, "D:\P" for "D:\P\bin\OrnBoard.arx". While that module is not loaded the host
/// program stands in for it.
AFX_EXT_API CString productFolder();

} // namespace orncore
