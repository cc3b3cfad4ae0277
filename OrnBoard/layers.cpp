#include "layers.h"

#include "OrnCore/quill_config.h"
#include "layerpick/named_styles.h"

namespace board {
namespace {

bool hasLayer(AcDbDatabase* db, const CString& name) {
    return db != nullptr && !kelmor::GetLayerId(name, db).isNull();
}

std::vector<unsigned int> allCodes() {
    std::vector<unsigned int> codes;
    for (const auto& [code, layer] : g_pQuillCfgSet->GetLayers())
        codes.push_back(code);
    return codes;
}

/// False for a number without a layer, or one that the drawing refuses.
bool makeLayer(AcDbDatabase* db, unsigned int code, std::vector<NumberedLayer>& made) {
    const auto& layers = g_pQuillCfgSet->GetLayers();
    const auto layer = layers.find(code);
    if (layer == layers.end()) return false;
    const bool isThere = hasLayer(db, layer->second.name);
    if (g_pQuillCfgSet->GetLayerId(code, db).isNull()) return false;
    if (!isThere) made.push_back({code, layer->second, true});
    return true;
}

} // namespace

std::vector<NumberedLayer> listNumberedLayers(AcDbDatabase* db) {
    std::vector<NumberedLayer> rows;
    for (const auto& [code, layer] : g_pQuillCfgSet->GetLayers())
        rows.push_back({code, layer, hasLayer(db, layer.name)});
    return rows;
}

LayersMade makeNumberedLayers(AcDbDatabase* db, const std::vector<unsigned int>& codes) {
    LayersMade result;
    for (const unsigned int code : codes.empty() ? allCodes() : codes)
        if (!makeLayer(db, code, result.made)) result.refused.push_back(code);
    return result;
}

} // namespace board
