#include "component/style_record.h"

#include "OrnCore/rw_xdata.h"
#include "component/component_fields.h"

namespace component {
namespace {

constexpr const wchar_t* kApplication = L"a";
constexpr int kMarker = 0;

/// Appends a record's fields to a list.
class ValueWriter {
public:
    explicit ValueWriter(resbuf*& chain) : chain_(chain) {}

    template <class Value>
    void operator()(const char* /*key*/, const Value& field) const {
        rwXData::addXdata(kApplication, chain_, field);
    }
    void operator()(const char* /*key*/, Flag<const int> field) const {
        rwXData::addXdata(kApplication, chain_, field.value);
    }
    void operator()(const char* /*key*/, const LayerInfo& field) const {
        eachLayerField(field, *this);
    }

private:
    resbuf*& chain_;
};

/// Fills a record's fields from a list, one value each.
class ValueReader {
public:
    explicit ValueReader(resbuf*& cursor) : cursor_(cursor) {}

    template <class Value>
    void operator()(const char* /*key*/, Value& field) const {
        rwXData::getXdata(cursor_, field);
    }
    void operator()(const char* /*key*/, Flag<int> field) const {
        rwXData::getXdata(cursor_, field.value);
    }
    void operator()(const char* /*key*/, LayerInfo& field) const { eachLayerField(field, *this); }

private:
    resbuf*& cursor_;
};

/// Every value behind the marker, in order.
template <class Component, class Visit>
void eachValue(Component& style, const Visit& visit) {
    visit("groupName", style.groupName);
    visit("typeName", style.typeName);
    visit("styleName", style.styleName);
    eachComponentField(style, visit);
}

} // namespace

frame::ResbufChain recordValues(const ComponentInfo& style) {
    resbuf* chain = nullptr;
    rwXData::addXdata(kApplication, chain, kMarker);
    eachValue(style, ValueWriter(chain));
    return frame::ResbufChain(chain);
}

ComponentInfo styleOfRecord(resbuf* values) {
    int marker = kMarker;
    rwXData::getXdata(values, marker);
    ComponentInfo style;
    eachValue(style, ValueReader(values));
    return style;
}

} // namespace component
