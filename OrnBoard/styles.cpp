#include "styles.h"

#include "component/component_func.h"
#include "component/drawing_styles.h"

namespace board {
namespace {

// The library does not report what it cannot write.
bool opensForWriting(const CString& path) {
    CFile file;
    return file.Open(path, CFile::modeReadWrite) != FALSE;
}

} // namespace

StyleList listStyles() {
    ComponentMap inDrawing = component::drawingStyles();
    if (!inDrawing.empty()) return {true, std::move(inDrawing)};
    return {false, ComponentFunc::GetAllComponentInfo(true)};
}

StyleTransfer loadStyles(AcDbDatabase* db, const CString& path) {
    if (db == nullptr) return {.problem = L"there is no drawing"};
    const ComponentMap styles = path.IsEmpty() ? ComponentFunc::GetAllComponentInfo(true)
                                               : ComponentFunc::GetAllComponentInfo(path);
    const CString file = path.IsEmpty() ? L"the product's defaults file" : path;
    if (styles.empty()) return {.problem = file + L": no styles in it"};
    ComponentFunc::SaveComponentDataToDwg(styles, db);
    return {.count = static_cast<int>(styles.size())};
}

StyleTransfer saveStyles(const CString& path) {
    const ComponentMap styles = component::drawingStyles();
    if (styles.empty()) return {.problem = L"the drawing carries no styles"};
    if (path.Right(5).CompareNoCase(L".json") != 0)
        return {.problem = path + L": the name must end in .json"};
    ComponentFunc::SaveComponentInfo(styles, path);
    if (!opensForWriting(path)) return {.problem = path + L": cannot be written"};
    return {.count = static_cast<int>(styles.size())};
}

} // namespace board
