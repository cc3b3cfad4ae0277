// The spreadsheet application's members that are called here, by their numbers, and calls with one
// value.
#pragma once

#include <afxdisp.h>

namespace excel {

enum Member : DISPID {
    kPattern = 95,
    kColor = 99,
    kSize = 104,
    kStrikethrough = 105,
    kUnderline = 106,
    kName = 110,
    kDelete = 117,
    kCount = 118,
    kLineStyle = 119,
    kWeight = 120,
    kWidth = 122,
    kHeight = 123,
    kTop = 126,
    kLeft = 127,
    kInterior = 129,
    kOrientation = 134,
    kHorizontalAlignment = 136,
    kVerticalAlignment = 137,
    kFont = 146,
    kItem = 170,
    kFontStyle = 177,
    kSuperscript = 178,
    kSubscript = 179,
    kAdd = 181,
    kNumberFormat = 193,
    kRange = 197,
    kIndentLevel = 201,
    kMergeCells = 208,
    kShrinkToFit = 209,
    kAutoFit = 237,
    kCells = 238,
    kColumnWidth = 242,
    kEntireColumn = 246,
    kInsert = 252,
    kFormula = 261,
    kRowHeight = 272,
    kWrapText = 276,
    kCloseBook = 277,
    kSave = 283,
    kQuit = 302,
    kActivate = 304,
    kActiveWorkbook = 308,
    kDisplayAlerts = 343,
    kWindowState = 396,
    kBorders = 435,
    kWorksheets = 485,
    kVisible = 558,
    kWorkbooks = 572,
    kBorderAround = 1067,
    kShapes = 1377,
    kValue = 6,
    kValue2 = 1388,
    kAddComment = 1389,
    kLockAspectRatio = 1700,
    kAddPicture = 1723,
    kOpen = 1923,
    kSaveAs = 1925
};

/// An argument that is left out.
[[nodiscard]] inline COleVariant missing() {
    return COleVariant(static_cast<long>(DISP_E_PARAMNOTFOUND), VT_ERROR);
}

// All of these throw the exceptions of COleDispatchDriver.

inline void put(COleDispatchDriver& object, Member member, const VARIANT& value) {
    static const BYTE kinds[] = VTS_VARIANT;
    object.InvokeHelper(member, DISPATCH_PROPERTYPUT, VT_EMPTY, nullptr, kinds, &value);
}
inline void put(COleDispatchDriver& object, Member member, long value) {
    static const BYTE kinds[] = VTS_I4;
    object.InvokeHelper(member, DISPATCH_PROPERTYPUT, VT_EMPTY, nullptr, kinds, value);
}
inline void put(COleDispatchDriver& object, Member member, double value) {
    static const BYTE kinds[] = VTS_R8;
    object.InvokeHelper(member, DISPATCH_PROPERTYPUT, VT_EMPTY, nullptr, kinds, value);
}
inline void put(COleDispatchDriver& object, Member member, const CString& value) {
    static const BYTE kinds[] = VTS_BSTR;
    object.InvokeHelper(member, DISPATCH_PROPERTYPUT, VT_EMPTY, nullptr, kinds, value.GetString());
}
/// A truth value: what is not 0 is true.
inline void putFlag(COleDispatchDriver& object, Member member, int value) {
    static const BYTE kinds[] = VTS_BOOL;
    object.InvokeHelper(member, DISPATCH_PROPERTYPUT, VT_EMPTY, nullptr, kinds, value);
}

inline double getReal(COleDispatchDriver& object, Member member) {
    double value = 0.0;
    object.InvokeHelper(member, DISPATCH_PROPERTYGET, VT_R8, &value, nullptr);
    return value;
}

/// An object that a member answers.
/// @param flags  DISPATCH_PROPERTYGET or DISPATCH_METHOD.
/// @param kinds  VTS_... of the arguments that follow.
template <class... Arguments>
[[nodiscard]] COleDispatchDriver getObject(COleDispatchDriver& object, Member member, WORD flags,
                                           const BYTE* kinds, Arguments... arguments) {
    LPDISPATCH found = nullptr;
    object.InvokeHelper(member, flags, VT_DISPATCH, &found, kinds, arguments...);
    return COleDispatchDriver(found);
}
[[nodiscard]] inline COleDispatchDriver getObject(COleDispatchDriver& object, Member member) {
    return getObject(object, member, DISPATCH_PROPERTYGET, nullptr);
}

/// A method without arguments and without a result.
inline void call(COleDispatchDriver& object, Member member) {
    object.InvokeHelper(member, DISPATCH_METHOD, VT_EMPTY, nullptr, nullptr);
}

/// Tells the user.
inline int refuse(LPCTSTR text) {
    AfxMessageBox(text, MB_OK | MB_ICONEXCLAMATION);
    return 0;
}

/// Runs calls; when one fails, tells the user in the application's own words. 1 or 0.
template <class Calls>
int attempt(Calls calls) {
    try {
        calls();
        return 1;
    } catch (CException* exception) {
        exception->ReportError(MB_OK | MB_ICONEXCLAMATION);
        exception->Delete();
        return 0;
    }
}

/// Runs calls whose failure has a text of its own, or none; false when one fails.
template <class Calls>
bool succeeds(Calls calls) {
    try {
        calls();
        return true;
    } catch (CException* exception) {
        exception->Delete();
        return false;
    }
}

} // namespace excel
