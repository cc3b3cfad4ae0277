// The product's numbered layers, text styles and dimension styles, from `prg/quillConfig.json` in
// the product's folder.
#pragma once

#include <map>
#include <memory>

#include <afxwin.h>
#include <dbid.h>

#include "OrnCore/quill_settings.h"

class AcDbDatabase;

/// Numbers to drawing objects. The objects are made with their configured properties where the
/// drawing has none of that name; those it has are taken as they are.
///
/// The file is read when something is asked for the first time. When it is missing or broken that
/// is said once, in a message box, and every answer is null or empty. Unknown numbers are answered
/// so too, without a message.
class AFX_EXT_CLASS CQuillCfgDll {
public:
    // A null database means the working one; without any the answer is null.

    AcDbObjectId GetLayerId(unsigned int code, AcDbDatabase* db = nullptr);
    AcDbObjectId GetTextStyleId(unsigned int code, AcDbDatabase* db = nullptr);
    /// @param first   the drawing's scale, 100 for 1:100.
    /// @param second  the text height on the sheet in millimetres.
    /// @param third   the kind; 0 for the ordinary one.
    /// The style's name is "VANT_", first, "_" and second.
    AcDbObjectId GetDimStyleId(int first, int second, int third, AcDbDatabase* db = nullptr);

    /// Empty for an unknown number.
    CString GetLayerName(unsigned int code);
    /// All layers by number.
    const std::map<unsigned int, quill::Layer>& GetLayers();

    /// Forgets the file: the next question reads it anew.
    void Reset();

private:
    const quill::Settings& settings();

    CString path_; // Of the file that was read; empty before.
    quill::Settings settings_;
};

/// The product's configuration; never null.
extern AFX_EXT_DATA CQuillCfgDll* g_pQuillCfgSet;
