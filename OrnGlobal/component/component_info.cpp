#include "component/component_info.h"

namespace {

bool sameOutlineAndHatch(const ComponentInfo& a, const ComponentInfo& b) {
    return a.lineColorIndex == b.lineColorIndex && a.lineType.CompareNoCase(b.lineType) == 0 &&
           a.lineWidth == b.lineWidth && a.setHatch == b.setHatch && a.hatchName == b.hatchName &&
           a.hatchColorIndex == b.hatchColorIndex &&
           a.lineLayerInfo.layerName == b.lineLayerInfo.layerName &&
           a.hatchLayerInfo.layerName == b.hatchLayerInfo.layerName;
}

// The width counts only when one of the two is drawn with it and the other is not, and the case of
// the linetype only when it does not. Callers sort their drawings by this answer.
bool sameSimpleLineTypeAndWidth(const ComponentInfo& a, const ComponentInfo& b) {
    if (a.setSimpleLineRealWidth == b.setSimpleLineRealWidth)
        return a.simpleLineType == b.simpleLineType;
    return a.simpleLineType.CompareNoCase(b.simpleLineType) == 0 &&
           a.simpleLineWidth == b.simpleLineWidth;
}

bool sameSimpleLine(const ComponentInfo& a, const ComponentInfo& b) {
    return a.simpleLineColorIndex == b.simpleLineColorIndex && sameSimpleLineTypeAndWidth(a, b) &&
           a.simpleLineLayerInfo.layerName == b.simpleLineLayerInfo.layerName;
}

} // namespace

bool ComponentInfo::operator==(const ComponentInfo& other) const {
    if (expressionStyle != other.expressionStyle) return false;
    return expressionStyle == 0 ? sameOutlineAndHatch(*this, other) : sameSimpleLine(*this, other);
}
