#include "styles_output.h"

#include "component/component_fields.h"
#include "json_output.h"
#include "win/code_page.h"

namespace orn {
namespace {

/// Collects a record's fields as members of an object.
class FieldCollector {
public:
    explicit FieldCollector(Json::Value& object) : object_(object) {}

    void operator()(const char* key, const CString& field) const {
        object_[key] = headless::toUtf8(field.GetString());
    }
    void operator()(const char* key, int field) const { object_[key] = field; }
    void operator()(const char* key, double field) const { object_[key] = numberOrNull(field); }
    void operator()(const char* key, component::Flag<const int> field) const {
        object_[key] = field.value != 0;
    }
    void operator()(const char* key, const LayerInfo& field) const {
        component::eachLayerField(field, FieldCollector(object_[key]));
    }

private:
    Json::Value& object_;
};

Json::Value jsonOf(const ComponentInfo& style) {
    Json::Value value;
    const FieldCollector collect(value);
    collect("groupName", style.groupName);
    collect("typeName", style.typeName);
    collect("styleName", style.styleName);
    component::eachComponentField(style, collect);
    return value;
}

} // namespace

void printJson(std::ostream& out, const board::StyleList& list) {
    Json::Value value;
    value["source"] = list.fromDrawing ? "drawing" : "defaults";
    value["styles"] = Json::Value(Json::arrayValue);
    for (const auto& [key, style] : list.styles)
        value["styles"].append(jsonOf(style));
    printJson(out, value);
}

} // namespace orn
