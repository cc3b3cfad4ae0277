// The product's component styles: the drawing's own, else those of the defaults file.
//
// A defaults file is one JSON document in the system's code page, with styles as objects below
// their group's and their type's name.
#pragma once

#include "component/component_info.h"

class AcDbDatabase;

namespace ComponentFunc {

/// The current drawing's styles; the defaults file's when the drawing has none or with `fileOnly`.
/// Empty when there is no such file.
AFX_EXT_API std::map<CString, ComponentInfo> GetAllComponentInfo(bool fileOnly);

/// The styles of a file, read anew on each call. Empty when there is no such file; empty with a
/// message box when its name does not end in ".json" or it is no JSON document.
///
/// @param path  a CString: a literal would choose the function above.
AFX_EXT_API std::map<CString, ComponentInfo> GetAllComponentInfo(CString const& path);

/// One style: a drawing that has any answers alone, the defaults file only for one that has none
/// or with `fileOnly`. A default record, without names, when there is no such style.
///
/// @param styleName  empty for the first style of the type.
AFX_EXT_API ComponentInfo GetComponentInfo(CString const& groupName, CString const& typeName,
                                           CString const& styleName, bool fileOnly);

/// Replaces the file by a document of the styles under the names they carry, on one line. Folders
/// that are missing are made; failures are not reported.
AFX_EXT_API void SaveComponentInfo(std::map<CString, ComponentInfo> const& components,
                                   CString const& path);

/// Puts the styles in the place of those that a drawing carries; an empty map leaves it without.
/// Nothing happens without a drawing, or while its dictionaries cannot be written.
///
/// @param db  null: the working database.
AFX_EXT_API void SaveComponentDataToDwg(std::map<CString, ComponentInfo> const& components,
                                        AcDbDatabase* db);

} // namespace ComponentFunc

/// The current drawing's styles, else those of the defaults file, for modules that bind by name.
/// They must use the same runtime library: the map is no plain structure.
extern "C" AFX_EXT_API std::map<CString, ComponentInfo> kelmor_get_component_data();
