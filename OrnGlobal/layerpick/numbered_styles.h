// The product's layers, text styles and dimension styles by their numbers.
//
// All come from the product's configuration, which makes in the drawing what is missing there.
// Answers are null or empty for unknown numbers, without a drawing and without a configuration.
#pragma once

#include <afxwin.h>
#include <dbid.h>

class AcDbDatabase;

namespace kelmor {

AFX_EXT_API AcDbObjectId GetLayerId(unsigned int code);
AFX_EXT_API AcDbObjectId GetTextStyleId(unsigned int code);
/// @param first   the drawing's scale, 100 for 1:100.
/// @param second  the text height on the sheet in millimetres.
/// @param third   the kind; 0 for the ordinary one.
/// @param db      null: the working database.
AFX_EXT_API AcDbObjectId GetDimStyleId(int first, int second, int third, AcDbDatabase* db);
AFX_EXT_API CString GetLayerName(unsigned int code);

} // namespace kelmor

// The same for callers that cannot take the library's classes.
extern "C" {

/// Makes the layer exist in the working database. The answer means nothing.
AFX_EXT_API int kelmor_create_layer(unsigned int code);
/// 0, and in `name` the layer's name, which the caller frees with delete[]; 1, leaving `name`, when
/// there is none.
AFX_EXT_API int kelmor_get_layer_name(unsigned int code, wchar_t** name);
AFX_EXT_API AcDbObjectId kelmor_get_layer_id(unsigned int code);
}
