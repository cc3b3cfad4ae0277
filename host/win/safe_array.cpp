#include "win/safe_array.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

#include "win/dispatch.h"
#include "win/owned_variant.h"

namespace {

std::atomic<std::size_t> liveArrays = 0;

// The element type stands right before the descriptor, as FADF_HAVEVARTYPE says.
constexpr std::size_t kHeaderSize = 16;

char* blockOf(SAFEARRAY* array) { return reinterpret_cast<char*>(array) - kHeaderSize; }

VARTYPE typeOf(SAFEARRAY* array) {
    ULONG type = 0;
    std::memcpy(&type, reinterpret_cast<char*>(array) - sizeof type, sizeof type);
    return static_cast<VARTYPE>(type);
}

ULONG elementSize(VARTYPE type) {
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return 8;
    case VT_DECIMAL:
        return 16;
    case VT_VARIANT:
        return 24;
    default:
        return 0;
    }
}

USHORT featuresOf(VARTYPE type) {
    switch (type) {
    case VT_BSTR:
        return FADF_HAVEVARTYPE | FADF_BSTR;
    case VT_DISPATCH:
        return FADF_HAVEVARTYPE | FADF_DISPATCH;
    case VT_UNKNOWN:
        return FADF_HAVEVARTYPE | FADF_UNKNOWN;
    case VT_VARIANT:
        return FADF_HAVEVARTYPE | FADF_VARIANT;
    default:
        return FADF_HAVEVARTYPE;
    }
}

SAFEARRAYBOUND* boundsOf(SAFEARRAY* array) { return array->rgsabound; }

/// The bound of a dimension counted from 0.
SAFEARRAYBOUND& boundOf(SAFEARRAY* array, UINT dimension) {
    return boundsOf(array)[array->cDims - 1U - dimension];
}

std::size_t elementCount(SAFEARRAY* array) {
    std::size_t count = 1;
    for (UINT i = 0; i < array->cDims; ++i)
        count *= boundsOf(array)[i].cElements;
    return count;
}

char* elementAt(SAFEARRAY* array, std::size_t index) {
    return static_cast<char*>(array->pvData) + index * array->cbElements;
}

/// An element as a variant that refers to the same contents.
VARIANT viewOf(VARTYPE type, const void* element) {
    VARIANT view = {};
    if (type == VT_VARIANT) {
        std::memcpy(&view, element, sizeof view);
        return view;
    }
    view.vt = type;
    std::memcpy(&view.llVal, element, sizeof view.llVal);
    return view;
}

bool ownsContents(VARTYPE type) {
    return type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN || type == VT_VARIANT;
}

/// Frees what an element owns, and leaves it empty.
void clearElement(VARTYPE type, char* element, ULONG size) {
    if (ownsContents(type)) {
        VARIANT value = viewOf(type, element);
        VariantClear(&value);
    }
    std::memset(element, 0, size);
}

/// Copies an element into an empty place.
HRESULT copyElement(VARTYPE type, char* target, const void* source, ULONG size) {
    if (!ownsContents(type)) {
        std::memcpy(target, source, size);
        return S_OK;
    }
    const VARIANT view = viewOf(type, source);
    headless::OwnedVariant copy;
    if (const HRESULT copied = VariantCopy(&copy, &view); FAILED(copied)) return copied;
    const VARIANT value = copy.release();
    std::memcpy(target, type == VT_VARIANT ? static_cast<const void*>(&value) : &value.llVal, size);
    return S_OK;
}

} // namespace

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, const SAFEARRAYBOUND* bounds) {
    const ULONG size = elementSize(type);
    constexpr UINT kMostDimensions = 64;
    if (size == 0 || dimensions == 0 || dimensions > kMostDimensions) return nullptr;
    std::size_t bytes = size;
    for (UINT i = 0; i < dimensions; ++i) {
        if (__builtin_mul_overflow(bytes, bounds[i].cElements, &bytes)) return nullptr;
    }
    auto* block = static_cast<char*>(std::calloc(1, kHeaderSize + sizeof(SAFEARRAY) +
                                                        (dimensions - 1) * sizeof(SAFEARRAYBOUND)));
    if (block == nullptr) return nullptr;
    auto* array = reinterpret_cast<SAFEARRAY*>(block + kHeaderSize);
    array->pvData = std::calloc(bytes == 0 ? 1 : bytes, 1);
    if (array->pvData == nullptr) {
        std::free(block);
        return nullptr;
    }
    const ULONG storedType = type;
    std::memcpy(reinterpret_cast<char*>(array) - sizeof storedType, &storedType, sizeof storedType);
    array->cDims = static_cast<USHORT>(dimensions);
    array->fFeatures = featuresOf(type);
    array->cbElements = size;
    for (UINT i = 0; i < dimensions; ++i)
        boundOf(array, i) = bounds[i];
    ++liveArrays;
    return array;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements) {
    const SAFEARRAYBOUND bound = {elements, lowerBound};
    return SafeArrayCreate(type, 1, &bound);
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
    if (array == nullptr) return S_OK;
    if (array->cLocks > 0) return DISP_E_ARRAYISLOCKED;
    const VARTYPE type = typeOf(array);
    if (ownsContents(type)) {
        const std::size_t count = elementCount(array);
        for (std::size_t i = 0; i < count; ++i)
            clearElement(type, elementAt(array, i), array->cbElements);
    }
    std::free(array->pvData);
    std::free(blockOf(array));
    --liveArrays;
    return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy) {
    *copy = nullptr;
    if (array == nullptr) return S_OK;
    SAFEARRAYBOUND bounds[64];
    for (UINT i = 0; i < array->cDims; ++i)
        bounds[i] = boundOf(array, i);
    SAFEARRAY* made = SafeArrayCreate(typeOf(array), array->cDims, bounds);
    if (made == nullptr) return E_OUTOFMEMORY;
    const std::size_t count = elementCount(array);
    for (std::size_t i = 0; i < count; ++i) {
        const HRESULT copied =
            copyElement(typeOf(array), elementAt(made, i), elementAt(array, i), array->cbElements);
        if (FAILED(copied)) {
            SafeArrayDestroy(made);
            return copied;
        }
    }
    *copy = made;
    return S_OK;
}

HRESULT SafeArrayPtrOfIndex(SAFEARRAY* array, const LONG* indices, void** element) {
    std::size_t index = 0;
    for (UINT i = array->cDims; i-- > 0;) {
        const SAFEARRAYBOUND& bound = boundOf(array, i);
        const LONGLONG offset = LONGLONG{indices[i]} - bound.lLbound;
        if (offset < 0 || offset >= LONGLONG{bound.cElements}) return DISP_E_BADINDEX;
        index = index * bound.cElements + static_cast<std::size_t>(offset);
    }
    *element = elementAt(array, index);
    return S_OK;
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, const LONG* indices, void* element) {
    void* place = nullptr;
    if (const HRESULT found = SafeArrayPtrOfIndex(array, indices, &place); FAILED(found)) {
        return found;
    }
    const VARTYPE type = typeOf(array);
    // Texts and objects are given as what they are, other elements by their address.
    const bool isPointer = type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN;
    const void* source = isPointer ? static_cast<const void*>(&element) : element;
    clearElement(type, static_cast<char*>(place), array->cbElements);
    return copyElement(type, static_cast<char*>(place), source, array->cbElements);
}

HRESULT SafeArrayGetElement(SAFEARRAY* array, const LONG* indices, void* element) {
    void* place = nullptr;
    if (const HRESULT found = SafeArrayPtrOfIndex(array, indices, &place); FAILED(found)) {
        return found;
    }
    return copyElement(typeOf(array), static_cast<char*>(element), place, array->cbElements);
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    if (dimension == 0 || dimension > array->cDims) return DISP_E_BADINDEX;
    *bound = boundOf(array, dimension - 1).lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    if (dimension == 0 || dimension > array->cDims) return DISP_E_BADINDEX;
    const SAFEARRAYBOUND& found = boundOf(array, dimension - 1);
    *bound = found.lLbound + static_cast<LONG>(found.cElements) - 1;
    return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array) { return array == nullptr ? 0 : array->cDims; }

UINT SafeArrayGetElemsize(SAFEARRAY* array) { return array == nullptr ? 0 : array->cbElements; }

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) {
    *type = typeOf(array);
    return S_OK;
}

HRESULT SafeArrayLock(SAFEARRAY* array) {
    ++array->cLocks;
    return S_OK;
}

HRESULT SafeArrayUnlock(SAFEARRAY* array) {
    if (array->cLocks == 0) return E_INVALIDARG;
    --array->cLocks;
    return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
    *data = array->pvData;
    return SafeArrayLock(array);
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) { return SafeArrayUnlock(array); }

namespace headless {

std::size_t liveSafeArrayCount() { return liveArrays; }

} // namespace headless
