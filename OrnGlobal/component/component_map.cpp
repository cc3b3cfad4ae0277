#include "component/component_map.h"

#include <algorithm>

namespace component {

CString keyOf(const CString& group, const CString& type, const CString& style) {
    return group + L"-" + type + L"-" + style;
}

// The names are compared one by one: "a-b" and "c" share a key with "a" and "b-c".
std::optional<ComponentInfo> findStyle(const ComponentMap& styles, const CString& group,
                                       const CString& type, const CString& style) {
    const auto found = std::ranges::find_if(styles, [&](const auto& entry) {
        const ComponentInfo& info = entry.second;
        return info.groupName == group && info.typeName == type &&
               (style.IsEmpty() || info.styleName == style);
    });
    if (found == styles.end()) return std::nullopt;
    return found->second;
}

} // namespace component
