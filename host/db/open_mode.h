// How an object is opened, and the small enumerations that many classes of the database share.
#pragma once

namespace AcDb {

enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };

enum Visibility { kInvisible = 1, kVisible = 0 };

enum Poly2dType { k2dSimplePoly, k2dFitCurvePoly, k2dQuadSplinePoly, k2dCubicSplinePoly };
enum Poly3dType { k3dSimplePoly, k3dQuadSplinePoly, k3dCubicSplinePoly };
enum PolyMeshType {
    kSimpleMesh = 0,
    kQuadSurfaceMesh = 5,
    kCubicSurfaceMesh = 6,
    kBezierSurfaceMesh = 8
};
enum Vertex2dType {
    k2dVertex = 0,
    k2dSplineCtlVertex = 1,
    k2dSplineFitVertex = 2,
    k2dCurveFitVertex = 3
};
enum Vertex3dType { k3dSimpleVertex = 0, k3dControlVertex = 1, k3dFitVertex = 2 };

enum TextHorzMode {
    kTextLeft = 0,
    kTextCenter = 1,
    kTextRight = 2,
    kTextAlign = 3,
    kTextMid = 4,
    kTextFit = 5
};
enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };

enum LineWeight {
    kLnWt000 = 0,
    kLnWt005 = 5,
    kLnWt009 = 9,
    kLnWt013 = 13,
    kLnWt015 = 15,
    kLnWt018 = 18,
    kLnWt020 = 20,
    kLnWt025 = 25,
    kLnWt030 = 30,
    kLnWt035 = 35,
    kLnWt040 = 40,
    kLnWt050 = 50,
    kLnWt053 = 53,
    kLnWt060 = 60,
    kLnWt070 = 70,
    kLnWt080 = 80,
    kLnWt090 = 90,
    kLnWt100 = 100,
    kLnWt106 = 106,
    kLnWt120 = 120,
    kLnWt140 = 140,
    kLnWt158 = 158,
    kLnWt200 = 200,
    kLnWt211 = 211,
    kLnWtByLayer = -1,
    kLnWtByBlock = -2,
    kLnWtByLwDefault = -3
};

enum Planarity { kNonPlanar = 0, kPlanar = 1, kLinear = 2 };

} // namespace AcDb
