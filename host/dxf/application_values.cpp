#include "dxf/application_values.h"

#include "db/layer_table.h"
#include "db/text_style_table.h"

namespace headless {
namespace {

void readFont(AcDbTextStyleTableRecord& style, std::span<const DxfTag> groups,
              const AcDbDxfFiler& filer) {
    bool ours = false;
    const DxfTag* typeface = nullptr;
    std::int64_t flags = 0;
    for (const DxfTag& tag : groups) {
        if (tag.code == 1001) ours = tag.text() == "ACAD";
        if (ours && tag.code == 1000) typeface = &tag;
        if (ours && tag.code == 1071) flags = tag.integer();
    }
    if (typeface != nullptr) style.readFont(filer.text(*typeface), flags);
}

// Layers got their transparency after their record's groups were settled, so it stands in data of
// an application of that name.
void readTransparency(AcDbLayerTableRecord& layer, std::span<const DxfTag> groups) {
    bool ours = false;
    for (const DxfTag& tag : groups) {
        if (tag.code == 1001) ours = tag.text() == "AcCmTransparency";
        if (!ours || tag.code != 1071) continue;
        AcCmTransparency transparency;
        transparency.serializeIn(static_cast<Adesk::UInt32>(tag.integer()));
        layer.setTransparency(transparency);
    }
}

/// The second text of the standard's data; the first names the standard.
void readDescription(AcDbLayerTableRecord& layer, std::span<const DxfTag> groups,
                     const AcDbDxfFiler& filer) {
    bool ours = false;
    int texts = 0;
    for (const DxfTag& tag : groups) {
        if (tag.code == 1001) ours = tag.text() == "AcAecLayerStandard";
        if (ours && tag.code == 1000 && ++texts == 2) layer.setDescription(filer.text(tag).c_str());
    }
}

void readLayer(AcDbLayerTableRecord& layer, std::span<const DxfTag> groups,
               const AcDbDxfFiler& filer) {
    readTransparency(layer, groups);
    readDescription(layer, groups, filer);
}

} // namespace

void readApplicationValues(AcDbObject& object, std::span<const DxfTag> groups,
                           const AcDbDxfFiler& filer) {
    if (auto* const style = AcDbTextStyleTableRecord::cast(&object))
        readFont(*style, groups, filer);
    else if (auto* const layer = AcDbLayerTableRecord::cast(&object))
        readLayer(*layer, groups, filer);
}

} // namespace headless
