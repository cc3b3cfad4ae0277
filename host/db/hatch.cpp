#include "db/hatch.h"

#include "db/flat_transform.h"
#include "db/geometry_sink.h"
#include "db/hatch_loop.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbHatch, AcDbEntity, "HATCH")

using headless::CurvePiece;

namespace {

AcGePoint2d moved(const AcGePoint2d& point, const AcGeMatrix3d& local) {
    const AcGePoint3d after = local * AcGePoint3d(point.x, point.y, 0.0);
    return {after.x, after.y};
}

AcGeVector2d moved(const AcGeVector2d& vector, const AcGeMatrix3d& local) {
    const AcGeVector3d after = local * AcGeVector3d(vector.x, vector.y, 0.0);
    return {after.x, after.y};
}

} // namespace

AcDbHatch::AcDbHatch() = default;
AcDbHatch::~AcDbHatch() = default;

void AcDbHatch::Edge::transformBy(const AcGeMatrix3d& local) {
    piece = piece.transformed(local);
    for (AcGePoint2d& point : fitPoints)
        point = moved(point, local);
    startTangent = moved(startTangent, local);
    endTangent = moved(endTangent, local);
}

std::vector<CurvePiece> AcDbHatch::Loop::pieces() const {
    std::vector<CurvePiece> pieces;
    for (const Edge& edge : edges)
        pieces.push_back(edge.piece);
    const std::size_t count = vertices.size();
    const std::size_t segments = closed || count == 0 ? count : count - 1;
    for (std::size_t i = 0; i < segments; ++i) {
        const AcGePoint2d& from = vertices[i];
        const AcGePoint2d& to = vertices[(i + 1) % count];
        const AcGePoint3d start(from.x, from.y, 0.0);
        const AcGePoint3d end(to.x, to.y, 0.0);
        const double bulge = i < bulges.size() ? bulges[i] : 0.0;
        pieces.push_back(
            bulge == 0.0 ? CurvePiece::segment(start, end, 0.0, 1.0)
                         : CurvePiece::bulgeArc(start, end, AcGeVector3d::kZAxis, bulge, 0.0, 1.0));
    }
    return pieces;
}

AcGeMatrix3d AcDbHatch::toWorld() const {
    return headless::ocsMatrix(normal_) *
           AcGeMatrix3d::translation(AcGeVector3d(0.0, 0.0, elevation_));
}

int AcDbHatch::numLoops() const { return static_cast<int>(look(loops_).size()); }

Adesk::Int32 AcDbHatch::loopTypeAt(int index) const {
    if (index < 0 || index >= numLoops()) return 0;
    return loops_[static_cast<std::size_t>(index)].type;
}

Acad::ErrorStatus AcDbHatch::getLoopAt(int index, Adesk::Int32& type, AcGePoint2dArray& vertices,
                                       AcGeDoubleArray& bulges) const {
    if (index < 0 || index >= numLoops()) return Acad::eInvalidIndex;
    const Loop& loop = loops_[static_cast<std::size_t>(index)];
    if (!loop.isPolyline()) return Acad::eNotApplicable;
    type = loop.type;
    vertices.removeAll();
    bulges.removeAll();
    for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
        vertices.append(loop.vertices[i]);
        bulges.append(i < loop.bulges.size() ? loop.bulges[i] : 0.0);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getAssocObjIds(AcDbObjectIdArray& ids) const {
    for (int i = 0; i < numLoops(); ++i)
        getAssocObjIdsAt(i, ids);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getAssocObjIdsAt(int index, AcDbObjectIdArray& ids) const {
    if (index < 0 || index >= numLoops()) return Acad::eInvalidIndex;
    for (const AcDbObjectId id : loops_[static_cast<std::size_t>(index)].sources)
        ids.append(id);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getPatternDefinitionAt(int index, double& angle, double& baseX,
                                                    double& baseY, double& offsetX, double& offsetY,
                                                    AcGeDoubleArray& dashes) const {
    if (index < 0 || index >= numPatternDefinitions()) return Acad::eInvalidIndex;
    const PatternLine& line = patternLines_[static_cast<std::size_t>(index)];
    angle = line.angle;
    baseX = line.base.x;
    baseY = line.base.y;
    offsetX = line.offset.x;
    offsetY = line.offset.y;
    dashes.removeAll();
    for (const double dash : line.dashes)
        dashes.append(dash);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getPlane(AcGePlane& plane, AcDb::Planarity& kind) const {
    assertReadEnabled();
    plane = AcGePlane(toWorld() * AcGePoint3d::kOrigin, normal_);
    kind = AcDb::kPlanar;
    return Acad::eOk;
}

void AcDbHatch::getEcs(AcGeMatrix3d& ecs) const { ecs = headless::ocsMatrix(look(normal_)); }

Acad::ErrorStatus AcDbHatch::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    if (!flat.keepsCircles()) return Acad::eCannotScaleNonUniformly;
    AcGeMatrix3d local =
        flat.local() * AcGeMatrix3d::translation(AcGeVector3d(0.0, 0.0, elevation_));
    const double height = (local * AcGePoint3d::kOrigin).z;
    local = AcGeMatrix3d::translation(AcGeVector3d(0.0, 0.0, -height)) * local;
    for (Loop& loop : loops_) {
        for (AcGePoint2d& vertex : loop.vertices)
            vertex = moved(vertex, local);
        for (Edge& edge : loop.edges)
            edge.transformBy(local);
    }
    for (AcGePoint2d& seed : seeds_)
        seed = moved(seed, local);
    for (PatternLine& line : patternLines_) {
        line.angle = flat.angle(line.angle);
        line.base = moved(line.base, local);
        line.offset = moved(line.offset, local);
        for (double& dash : line.dashes)
            dash *= flat.scale();
    }
    elevation_ = height;
    normal_ = flat.normal();
    patternScale_ *= flat.scale();
    patternAngle_ = flat.angle(patternAngle_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::subGetGripPoints(AcGePoint3dArray& points) const {
    const AcGeMatrix3d placing = toWorld();
    for (const Loop& loop : loops_)
        for (const CurvePiece& piece : loop.pieces())
            points.append(placing * piece.start());
    return Acad::eOk;
}

void AcDbHatch::subDescribe(headless::GeometrySink& sink) const {
    const AcGeMatrix3d placing = toWorld();
    for (const Loop& loop : loops_)
        for (const CurvePiece& piece : loop.pieces())
            sink.curve(piece.transformed(placing));
}

void AcDbHatch::forEachReference(const headless::ReferenceVisitor& visit) {
    AcDbEntity::forEachReference(visit);
    for (Loop& loop : loops_) {
        for (AcDbObjectId& source : loop.sources)
            visit(source, headless::ReferenceKind::kSoftPointer);
        std::erase_if(loop.sources, [](AcDbObjectId id) { return id.isNull(); });
    }
}
