#include "layerpick/numbered_styles.h"

#include <algorithm>

#include "OrnCore/quill_config.h"

namespace kelmor {

AcDbObjectId GetLayerId(unsigned int code) { return g_pQuillCfgSet->GetLayerId(code); }

AcDbObjectId GetTextStyleId(unsigned int code) { return g_pQuillCfgSet->GetTextStyleId(code); }

AcDbObjectId GetDimStyleId(int first, int second, int third, AcDbDatabase* db) {
    return g_pQuillCfgSet->GetDimStyleId(first, second, third, db);
}

CString GetLayerName(unsigned int code) { return g_pQuillCfgSet->GetLayerName(code); }

} // namespace kelmor

int kelmor_create_layer(unsigned int code) {
    kelmor::GetLayerId(code);
    return 0;
}

int kelmor_get_layer_name(unsigned int code, wchar_t** name) {
    const CString found = kelmor::GetLayerName(code);
    if (found.IsEmpty() || name == nullptr) return 1;
    const auto length = static_cast<std::size_t>(found.GetLength());
    *name = new wchar_t[length + 1]();
    std::copy_n(found.GetString(), length, *name);
    return 0;
}

AcDbObjectId kelmor_get_layer_id(unsigned int code) { return kelmor::GetLayerId(code); }
