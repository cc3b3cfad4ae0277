// The stored fields of the style records with their keys, in the order of declaration.
//
// One list serves every reader and writer, so that they agree on keys, kinds and order. Inside the
// library only.
#pragma once

#include <string_view>

#include "component/component_info.h"

namespace component {

/// Marks a flag among the numbers, which have the same type.
template <class Number>
struct Flag {
    Number& value;
};

/// Calls visit(key, field) for each field of a layer; a flag comes as Flag.
///
/// @param layer  a LayerInfo, constant or not; the fields come accordingly.
template <class Layer, class Visit>
void eachLayerField(Layer& layer, Visit&& visit) {
    visit("layerName", layer.layerName);
    visit("colorIndex", layer.colorIndex);
    visit("lineType", layer.lineType);
    visit("lineWidth", layer.lineWidth);
    visit("tranparency", layer.transparency); // Spelled so in every file there is.
    visit("print", Flag{layer.print});
    visit("newVpFreeze", Flag{layer.newVpFreeze});
}

/// The same for a component's fields after its three names; layers come as a whole.
template <class Component, class Visit>
void eachComponentField(Component& component, Visit&& visit) {
    visit("attributeName", component.attributeName);
    visit("attributeValue1", component.attributeValue1);
    visit("attributeValue2", component.attributeValue2);
    visit("attributeValue3", component.attributeValue3);
    visit("attributeValue4", component.attributeValue4);
    visit("lineColorIndex", component.lineColorIndex);
    visit("lineType", component.lineType);
    visit("lineScale", component.lineScale);
    visit("lineWidth", component.lineWidth);
    visit("simpleLineColorIndex", component.simpleLineColorIndex);
    visit("simpleLineType", component.simpleLineType);
    visit("simpleLineScale", component.simpleLineScale);
    visit("simpleLineWidth", component.simpleLineWidth);
    visit("setSimpleLineRealWidth", Flag{component.setSimpleLineRealWidth});
    visit("setHatch", Flag{component.setHatch});
    visit("hatchName", component.hatchName);
    visit("hatchColorIndex", component.hatchColorIndex);
    visit("hatchScale", component.hatchScale);
    visit("expressionStyle", component.expressionStyle);
    visit("lineLayerInfo", component.lineLayerInfo);
    visit("hatchLayerInfo", component.hatchLayerInfo);
    visit("simpleLineLayerInfo", component.simpleLineLayerInfo);
    visit("useFloorHeight", Flag{component.useFloorHeight});
    visit("dryConstructionMethod", component.dryConstructionMethod);
}

} // namespace component
