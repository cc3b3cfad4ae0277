#include "db/polyline_3d.h"

#include "db/curve_piece.h"
#include "db/dxf_filer.h"
#include "db/dxf_output.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDb3dPolyline, AcDbCurve, "POLYLINE")

using headless::CurvePiece;

AcDb3dPolyline::AcDb3dPolyline(AcDb::Poly3dType type, AcGePoint3dArray& vertices,
                               Adesk::Boolean closed)
    : type_(type), closed_(closed) {
    for (const AcGePoint3d& vertex : vertices)
        appendVertex(new AcDb3dPolylineVertex(vertex));
}

Acad::ErrorStatus AcDb3dPolyline::length(double& length) const {
    double end = 0.0;
    const Acad::ErrorStatus status = getEndParam(end);
    return status == Acad::eOk ? getDistAtParam(end, length) : status;
}

Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDb3dPolylineVertex* vertex) {
    return vertices_.append(*this, vertex);
}

Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex) {
    return vertices_.append(*this, vertex, id);
}

Acad::ErrorStatus AcDb3dPolyline::openVertex(AcDb3dPolylineVertex*& vertex, AcDbObjectId id,
                                             AcDb::OpenMode mode, bool openErased) const {
    return vertices_.open(vertex, id, mode, openErased);
}

Acad::ErrorStatus AcDb3dPolyline::openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode) {
    return vertices_.openSequenceEnd(end, mode);
}

AcDbObjectIterator* AcDb3dPolyline::vertexIterator() const {
    assertReadEnabled();
    return vertices_.newIterator();
}

bool AcDb3dPolyline::takesSubentity(const AcDbEntity& part) const {
    return part.isKindOf(AcDb3dPolylineVertex::desc()) || part.isKindOf(AcDbSequenceEnd::desc());
}

bool AcDb3dPolyline::forEachPiece(const headless::PieceVisitor& visit) const {
    const AcDb3dPolylineVertex* first = nullptr;
    const AcDb3dPolylineVertex* previous = nullptr;
    double param = 0.0;
    bool goesOn = true;
    const auto join = [&](const AcDb3dPolylineVertex& from, const AcDb3dPolylineVertex& to) {
        goesOn = visit(CurvePiece::segment(from.place(), to.place(), param, param + 1.0));
        param += 1.0;
    };
    vertices_.forEach<AcDb3dPolylineVertex>([&](const AcDb3dPolylineVertex& vertex) {
        if (!goesOn || vertex.isFrame()) return;
        if (first == nullptr) first = &vertex;
        if (previous != nullptr) join(*previous, vertex);
        previous = &vertex;
    });
    if (!goesOn || first == nullptr) return goesOn;
    if (first == previous)
        return visit(CurvePiece::segment(first->place(), first->place(), 0.0, 0.0));
    if (closed_) join(*previous, *first);
    return goesOn;
}

Acad::ErrorStatus AcDb3dPolyline::reverseCurve() {
    assertWriteEnabled();
    vertices_.reverse();
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::subErase(bool erasing) {
    vertices_.erase(erasing);
    return AcDbCurve::subErase(erasing);
}

Acad::ErrorStatus AcDb3dPolyline::subExplode(headless::NewEntities& parts) const {
    return explodePieces(parts, AcGeVector3d::kZAxis, 0.0);
}

Acad::ErrorStatus AcDb3dPolyline::subTransformBy(const AcGeMatrix3d& transform) {
    vertices_.change<AcDb3dPolylineVertex>(
        [&](AcDb3dPolylineVertex& vertex) { vertex.place(transform * vertex.place()); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::subGetGripPoints(AcGePoint3dArray& points) const {
    vertices_.forEach<AcDb3dPolylineVertex>(
        [&](const AcDb3dPolylineVertex& vertex) { points.append(vertex.place()); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbCurve::dxfInFields(filer); status != Acad::eOk) return status;
    for (const headless::DxfTag& tag : filer->record().all()) {
        if (tag.code == 70) {
            closed_ = (tag.integer() & 1) != 0;
            if ((tag.integer() & 4) != 0 && type_ == AcDb::k3dSimplePoly)
                type_ = AcDb::k3dCubicSplinePoly;
        } else if (tag.code == 75) {
            if (tag.integer() == 5) type_ = AcDb::k3dQuadSplinePoly;
            if (tag.integer() == 6) type_ = AcDb::k3dCubicSplinePoly;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbCurve::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 66, 70, 75};
    constexpr std::int64_t kSpatial = 8;
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDb3dPolyline", kCodes);
    const bool smooth = type_ != AcDb::k3dSimplePoly;
    out.integer(66, 1); // vertices follow
    out.point(10, AcGePoint3d::kOrigin);
    out.integer(70, kSpatial | (closed_ ? 1 : 0) | (smooth ? 4 : 0));
    if (type_ == AcDb::k3dQuadSplinePoly) out.integer(75, 5);
    if (type_ == AcDb::k3dCubicSplinePoly) out.integer(75, 6);
    return Acad::eOk;
}
