#include "component/component_json.h"

#include <string>

#include "component/component_fields.h"
#include "component/component_map.h"
#include "component/json_text.h"
#include "text/conversions.h"

namespace component {
namespace {

CString widened(const std::string& bytes) { return String::ToCString(bytes, false); }
std::string narrowed(const CString& text) { return String::ToString(text, false); }

/// Fills a record's fields from the members of an object.
class FieldReader {
public:
    /// @param object  a value of another kind has no members.
    explicit FieldReader(const Json::Value* object)
        : object_(object != nullptr && object->isObject() ? object : nullptr) {}

    void operator()(std::string_view key, CString& field) const {
        field = widened(textOf(member(key)));
    }
    void operator()(std::string_view key, int& field) const { field = intOf(member(key)); }
    void operator()(std::string_view key, double& field) const { field = doubleOf(member(key)); }
    void operator()(std::string_view key, Flag<int> field) const {
        field.value = boolOf(member(key)) ? 1 : 0;
    }
    void operator()(std::string_view key, LayerInfo& field) const {
        eachLayerField(field, FieldReader(member(key)));
    }

private:
    const Json::Value* member(std::string_view key) const {
        return object_ == nullptr ? nullptr : object_->find(key.data(), key.data() + key.size());
    }

    const Json::Value* object_;
};

/// Collects a record's fields as members of an object.
class FieldWriter {
public:
    explicit FieldWriter(Json::Value& object) : object_(object) {}

    void operator()(const char* key, const CString& field) const { object_[key] = narrowed(field); }
    void operator()(const char* key, int field) const { object_[key] = field; }
    void operator()(const char* key, double field) const { object_[key] = numberValue(field); }
    void operator()(const char* key, Flag<const int> field) const {
        object_[key] = field.value != 0 ? 1 : 0;
    }
    void operator()(const char* key, const LayerInfo& field) const {
        eachLayerField(field, FieldWriter(object_[key]));
    }

private:
    Json::Value& object_;
};

/// Shows a visitor the members of an object that are objects themselves, until it answers true.
/// @return whether it did.
template <class Visit>
bool anyObjectMember(const Json::Value& object, Visit visit) {
    if (!object.isObject()) return false;
    for (auto member = object.begin(); member != object.end(); ++member)
        if (member->isObject() && visit(widened(member.name()), *member)) return true;
    return false;
}

ComponentInfo styleOf(const Json::Value& object, const CString& group, const CString& type,
                      const CString& style) {
    // Copies share its texts; a new record would allocate each of them only to be overwritten.
    static const ComponentInfo kNew;
    ComponentInfo info = kNew;
    info.groupName = group;
    info.typeName = type;
    info.styleName = style;
    eachComponentField(info, FieldReader(&object));
    return info;
}

} // namespace

ComponentMap stylesOf(const Json::Value& document) {
    ComponentMap styles;
    anyObjectMember(document, [&](const CString& group, const Json::Value& types) {
        return anyObjectMember(types, [&](const CString& type, const Json::Value& members) {
            return anyObjectMember(members, [&](const CString& style, const Json::Value& object) {
                styles.insert_or_assign(keyOf(group, type, style),
                                        styleOf(object, group, type, style));
                return false;
            });
        });
    });
    return styles;
}

std::optional<ComponentInfo> findStyle(const Json::Value& document, const CString& group,
                                       const CString& type, const CString& style) {
    std::optional<ComponentInfo> found;
    anyObjectMember(document, [&](const CString& groupName, const Json::Value& types) {
        return groupName == group &&
               anyObjectMember(types, [&](const CString& typeName, const Json::Value& members) {
                   return typeName == type &&
                          anyObjectMember(members,
                                          [&](const CString& name, const Json::Value& object) {
                                              if (!style.IsEmpty() && name != style) return false;
                                              found = styleOf(object, group, type, name);
                                              return true;
                                          });
               });
    });
    return found;
}

Json::Value documentOf(const ComponentMap& styles) {
    Json::Value document(Json::objectValue);
    for (const auto& [key, info] : styles) {
        Json::Value object(Json::objectValue);
        eachComponentField(info, FieldWriter(object));
        document[narrowed(info.groupName)][narrowed(info.typeName)][narrowed(info.styleName)] =
            std::move(object);
    }
    return document;
}

} // namespace component
