// Layers, text styles, dimension styles and blocks by their names.
//
// A null database means the working one. Nothing is reported: what is not there, or cannot be
// opened, is a null id or left out.
#pragma once

#include <vector>

#include <afxwin.h>
#include <dbid.h>

class AcDbDatabase;

namespace kelmor {

AFX_EXT_API AcDbObjectId GetLayerId(const CString& name, AcDbDatabase* db);
/// Null for the styles of shape files, which are none for texts.
AFX_EXT_API AcDbObjectId GetTextStyleId(const CString& name, AcDbDatabase* db);
/// In the order of the working database's table, those without a name left out.
AFX_EXT_API std::vector<CString> GetAllTextStyleName();

} // namespace kelmor

namespace Common {

/// In the order of the working database's table.
AFX_EXT_API std::vector<CString> GetDwgDimStyleName();
/// The name of a dimension style of the product's, "VANT_100_3" for 100 and 3.
AFX_EXT_API CString GetDimensionName(int first, int second);
/// A dimension style by name: one of the product's, which is made when it is missing, for a name
/// with "VANT_" anywhere in it. Of such a name the second and third of three pieces between
/// underlines are the numbers; with more or fewer pieces there is no such style.
AFX_EXT_API AcDbObjectId GetDimensionId(const CString& name);
/// Locks the current document meanwhile.
AFX_EXT_API AcDbObjectId GetBlockId(CString name);
/// The layer of that name; when it is missing a new continuous one with the colour of the product's
/// layer of that number, or by-layer when there is none.
AFX_EXT_API AcDbObjectId ExamineAndCreatLayer(const CString& name, unsigned int code);

} // namespace Common
