// How one kind of building component is drawn, and on which layers.
//
// A component shows as an outline with a hatch in it, or as a simple line; `expressionStyle` says
// which. Colours are the host's indices, 256 for by-layer. Line weights of layers are the host's
// values, -3 for its default. Flags are 0 or 1.
#pragma once

#include <map>

#include <afxwin.h>

/// The properties of one layer.
struct AFX_EXT_CLASS LayerInfo {
    CString layerName;
    int colorIndex = 1;
    CString lineType = L"CONTINUOUS";
    int lineWidth = -3;
    int transparency = 0;
    BOOL print = TRUE;
    BOOL newVpFreeze = FALSE;

    /// All fields are the same, names to the letter.
    bool operator==(const LayerInfo& other) const = default;
};

/// A component style. Three names tell it: the group, the type in it, the style of that type.
struct AFX_EXT_CLASS ComponentInfo {
    CString groupName;
    CString typeName;
    CString styleName;
    CString attributeName;
    int attributeValue1 = 60;
    int attributeValue2 = 70;
    int attributeValue3 = 130;
    int attributeValue4 = 130;
    int lineColorIndex = 256;
    CString lineType = L"Bylayer";
    double lineScale = 1.0;
    int lineWidth = 100;
    int simpleLineColorIndex = 256;
    CString simpleLineType = L"Bylayer";
    double simpleLineScale = 1.0;
    int simpleLineWidth = 100;
    BOOL setSimpleLineRealWidth = TRUE;
    BOOL setHatch = TRUE;
    CString hatchName = L"混凝土";
    int hatchColorIndex = 256;
    int hatchScale = 100;
    int expressionStyle = 0; ///< 0 for outline and hatch, else a simple line.
    LayerInfo lineLayerInfo;
    LayerInfo hatchLayerInfo;
    LayerInfo simpleLineLayerInfo;
    BOOL useFloorHeight = TRUE;
    int dryConstructionMethod = 7;

    /// Both look the same in a drawing, whatever their names, attributes, scales and the other
    /// properties of their layers. What the expression style leaves undrawn does not count.
    bool operator==(const ComponentInfo& other) const;
};

/// Styles by their three names joined with "-", in the order of the texts.
using ComponentMap = std::map<CString, ComponentInfo>;
