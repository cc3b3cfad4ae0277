#include "component/component_file.h"

#include <string>

#include "component/completed.h"
#include "component/component_json.h"
#include "component/disk_files.h"
#include "component/json_text.h"
#include "text/app_path.h"
#include "text/conversions.h"
#include "text/text_file.h"

namespace component {
namespace {

/// The file's bytes without its line ends.
std::string bytesOf(const CString& path) { return String::ToString(String::ReadFile(path), false); }

/// What `take` makes of the document in a file; its empty value when there is none.
template <class Take>
auto fromDocument(const CString& path, Take take) -> decltype(take(Json::Value())) {
    decltype(take(Json::Value())) answer{};
    if (!fileExists(path)) return answer;
    bool isDocument = false;
    const bool isRead = completed([&] {
        const auto document = parsed(bytesOf(path));
        if (document) answer = take(*document);
        isDocument = document.has_value();
    });
    if (!isRead || !isDocument) AfxMessageBox(L"数据文件解析错误!");
    return answer;
}

} // namespace

CString defaultsFile() { return GetAppPath() + L"\\prg\\componentDefaultData.json"; }

ComponentMap readStyles(const CString& path) { return fromDocument(path, stylesOf); }

std::optional<ComponentInfo> readStyle(const CString& path, const CString& group,
                                       const CString& type, const CString& style) {
    return fromDocument(
        path, [&](const Json::Value& document) { return findStyle(document, group, type, style); });
}

void writeStyles(const ComponentMap& styles, const CString& path) {
    // What does not complete leaves the old file whole.
    (void)completed([&] {
        const std::string line = compactLine(documentOf(styles)) + "\n";
        if (!fileExists(path)) GSF::TouchFile(path);
        replaceText(path, String::ToCString(line, false));
    });
}

} // namespace component
