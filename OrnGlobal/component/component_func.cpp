#include "component/component_func.h"

#include "component/component_file.h"
#include "component/component_map.h"
#include "component/drawing_styles.h"

namespace ComponentFunc {

std::map<CString, ComponentInfo> GetAllComponentInfo(bool fileOnly) {
    if (!fileOnly) {
        ComponentMap inDrawing = component::drawingStyles();
        if (!inDrawing.empty()) return inDrawing;
    }
    return component::readStyles(component::defaultsFile());
}

std::map<CString, ComponentInfo> GetAllComponentInfo(CString const& path) {
    if (path.Right(5).CompareNoCase(L".json") != 0) {
        AfxMessageBox(L"请输入json文件");
        return {};
    }
    return component::readStyles(path);
}

ComponentInfo GetComponentInfo(CString const& groupName, CString const& typeName,
                               CString const& styleName, bool fileOnly) {
    const ComponentMap inDrawing = fileOnly ? ComponentMap() : component::drawingStyles();
    const auto found =
        inDrawing.empty()
            ? component::readStyle(component::defaultsFile(), groupName, typeName, styleName)
            : component::findStyle(inDrawing, groupName, typeName, styleName);
    return found.value_or(ComponentInfo());
}

void SaveComponentInfo(std::map<CString, ComponentInfo> const& components, CString const& path) {
    component::writeStyles(components, path);
}

void SaveComponentDataToDwg(std::map<CString, ComponentInfo> const& components, AcDbDatabase* db) {
    component::storeStyles(components, db);
}

} // namespace ComponentFunc

std::map<CString, ComponentInfo> kelmor_get_component_data() {
    return ComponentFunc::GetAllComponentInfo(false);
}
