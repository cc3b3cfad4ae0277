// Automation's arrays: any number of dimensions, stored column by column.
#pragma once

#include "win/variant.h"

struct SAFEARRAYBOUND {
    ULONG cElements;
    LONG lLbound;
};

struct SAFEARRAY {
    USHORT cDims;
    USHORT fFeatures;
    ULONG cbElements;
    ULONG cLocks;
    PVOID pvData;
    SAFEARRAYBOUND rgsabound[1]; ///< The last dimension first.
};

constexpr USHORT FADF_FIXEDSIZE = 0x0010;
constexpr USHORT FADF_HAVEVARTYPE = 0x0080;
constexpr USHORT FADF_BSTR = 0x0100;
constexpr USHORT FADF_UNKNOWN = 0x0200;
constexpr USHORT FADF_DISPATCH = 0x0400;
constexpr USHORT FADF_VARIANT = 0x0800;

/// An array of empty elements; null for a type that arrays do not hold, no dimension or no memory.
/// @param bounds  one for each dimension, the first dimension first.
SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, const SAFEARRAYBOUND* bounds);
SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements);
/// Frees the elements and the array; refused while it is locked.
HRESULT SafeArrayDestroy(SAFEARRAY* array);
HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy);
/// Elements are copied in and out. `indices` holds one index for each dimension, the first
/// dimension first; DISP_E_BADINDEX outside the bounds.
HRESULT SafeArrayPutElement(SAFEARRAY* array, const LONG* indices, void* element);
HRESULT SafeArrayGetElement(SAFEARRAY* array, const LONG* indices, void* element);
HRESULT SafeArrayPtrOfIndex(SAFEARRAY* array, const LONG* indices, void** element);
/// Bounds of a dimension, counted from 1.
HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound);
HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound);
UINT SafeArrayGetDim(SAFEARRAY* array);
UINT SafeArrayGetElemsize(SAFEARRAY* array);
HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type);
HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
HRESULT SafeArrayUnaccessData(SAFEARRAY* array);
HRESULT SafeArrayLock(SAFEARRAY* array);
HRESULT SafeArrayUnlock(SAFEARRAY* array);

namespace headless {

/// Arrays made and not destroyed in this process.
[[nodiscard]] std::size_t liveSafeArrayCount();

} // namespace headless
