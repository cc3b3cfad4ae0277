#include "db/block_reference.h"

#include <cmath>
#include <numbers>

#include "db/attribute.h"
#include "db/block_table.h"
#include "db/dxf_output.h"
#include "db/explode.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"
#include "ge/angles.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbBlockReference, AcDbEntity, "INSERT")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbMInsertBlock, AcDbBlockReference, "INSERT")

using headless::Residence;
namespace field = headless::field;

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& scale) {
    if (scale.sx == 0.0 || scale.sy == 0.0 || scale.sz == 0.0) return Acad::eInvalidInput;
    return change(scale_, scale);
}

AcGeMatrix3d AcDbBlockReference::placing() const {
    AcGeMatrix3d turned = AcGeMatrix3d::rotation(rotation_, AcGeVector3d::kZAxis);
    if (!headless::isWorldNormal(normal_)) turned = headless::ocsMatrix(normal_) * turned;
    return turned.setTranslation(position_.asVector());
}

AcGeMatrix3d AcDbBlockReference::contentTransform() const {
    AcGeMatrix3d scaling;
    scale_.getMatrix(scaling);
    const auto* const block = Residence::peek<AcDbBlockTableRecord>(block_);
    const AcGePoint3d base = block == nullptr ? AcGePoint3d::kOrigin : block->originOf();
    return placing() * scaling * AcGeMatrix3d::translation(-base.asVector());
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
    assertReadEnabled();
    return contentTransform();
}

Acad::ErrorStatus AcDbBlockReference::setBlockTransform(const AcGeMatrix3d& transform) {
    assertWriteEnabled();
    const AcGeVector3d x = transform * AcGeVector3d::kXAxis;
    const AcGeVector3d y = transform * AcGeVector3d::kYAxis;
    const AcGeVector3d z = transform * AcGeVector3d::kZAxis;
    constexpr double kSquare = 1e-9;
    const auto skewed = [](const AcGeVector3d& a, const AcGeVector3d& b) {
        return std::abs(a.dotProduct(b)) > kSquare * a.length() * b.length();
    };
    if (skewed(x, y) || skewed(y, z) || skewed(x, z)) return Acad::eCannotScaleNonUniformly;
    if (x.isZeroLength() || y.isZeroLength()) return Acad::eDegenerateGeometry;

    // The normal is the z axis' own; a mirrored map shows as a negative scale along y. A flattened
    // z axis leaves the other two to tell.
    const AcGeVector3d normal = headless::readNormal(z.isZeroLength() ? x.crossProduct(y) : z);
    const AcGeVector3d local = headless::ocsMatrix(normal).transpose() * x;
    const bool mirrored = x.crossProduct(y).dotProduct(normal) < 0.0;
    const auto* const block = Residence::peek<AcDbBlockTableRecord>(block_);
    const AcGePoint3d base = block == nullptr ? AcGePoint3d::kOrigin : block->originOf();
    position_ = transform * base;
    normal_ = normal;
    rotation_ = AcGeVector2d(local.x, local.y).angle();
    scale_ = {x.length(), mirrored ? -y.length() : y.length(), z.length()};
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* attribute) {
    return attributes_.append(*this, attribute);
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
    return attributes_.append(*this, attribute, id);
}

Acad::ErrorStatus AcDbBlockReference::openAttribute(AcDbAttribute*& attribute, AcDbObjectId id,
                                                    AcDb::OpenMode mode, bool openErased) const {
    return attributes_.open(attribute, id, mode, openErased);
}

Acad::ErrorStatus AcDbBlockReference::openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode) {
    return attributes_.openSequenceEnd(end, mode);
}

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const {
    assertReadEnabled();
    return attributes_.newIterator();
}

Acad::ErrorStatus
AcDbBlockReference::geomExtentsBestFit(AcDbExtents& extents,
                                       const AcGeMatrix3d& parentTransform) const {
    assertReadEnabled();
    return headless::extentsUnder(*this, parentTransform, extents);
}

Acad::ErrorStatus AcDbBlockReference::getPlane(AcGePlane& plane, AcDb::Planarity& kind) const {
    plane = AcGePlane(look(position_), normal_);
    kind = AcDb::kPlanar;
    return Acad::eOk;
}

void AcDbBlockReference::getEcs(AcGeMatrix3d& ecs) const {
    ecs = headless::ocsMatrix(look(normal_));
}

bool AcDbBlockReference::takesSubentity(const AcDbEntity& part) const {
    return part.isKindOf(AcDbAttribute::desc()) || part.isKindOf(AcDbSequenceEnd::desc());
}

headless::GeometrySink::Reference AcDbBlockReference::placedContents() const {
    const Array cells = array();
    const AcGeMatrix3d axes = placing();
    headless::GeometrySink::Reference reference;
    reference.block = block_;
    reference.transform = contentTransform();
    reference.columns = std::max(cells.columns, 1);
    reference.rows = std::max(cells.rows, 1);
    reference.columnStep = axes * AcGeVector3d(cells.columnSpacing, 0.0, 0.0);
    reference.rowStep = axes * AcGeVector3d(0.0, cells.rowSpacing, 0.0);
    return reference;
}

void AcDbBlockReference::subDescribe(headless::GeometrySink& sink) const {
    sink.reference(placedContents());
    attributes_.forEach<AcDbAttribute>(
        [&sink](const AcDbAttribute& attribute) { sink.describe(attribute); });
}

Acad::ErrorStatus AcDbBlockReference::subExplode(headless::NewEntities& parts) const {
    // Hostile arrays have as many cells as their numbers allow.
    constexpr std::size_t kMostParts = 1'000'000;
    const auto* const block = Residence::peek<AcDbBlockTableRecord>(block_);
    if (block == nullptr) return Acad::eNullObjectId;
    if (!block->mayBeExploded()) return Acad::eCannotExplodeEntity;
    const headless::GeometrySink::Reference contents = placedContents();
    const auto cells =
        static_cast<std::size_t>(contents.columns) * static_cast<std::size_t>(contents.rows);
    if (cells * block->entityIds().size() > kMostParts) return Acad::eCannotExplodeEntity;
    for (int row = 0; row < contents.rows; ++row) {
        for (int column = 0; column < contents.columns; ++column) {
            const AcGeVector3d step = contents.columnStep * column + contents.rowStep * row;
            const auto status = headless::addBlockContents(
                parts, block_, AcGeMatrix3d::translation(step) * contents.transform);
            if (status != Acad::eOk) return status;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::explodeToOwnerSpace() const {
    assertReadEnabled();
    if (database() == nullptr) return Acad::eNotInDatabase;
    headless::NewEntities parts;
    if (const auto status = subExplode(parts); status != Acad::eOk) return status;
    AcDbSmartObjectPointer<AcDbBlockTableRecord> space(ownerId(), AcDb::kForWrite);
    if (space.openStatus() != Acad::eOk) return space.openStatus();
    for (auto& part : parts) {
        if (const auto status = space->appendAcDbEntity(part.get()); status != Acad::eOk)
            return status;
        part.release()->close();
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subErase(bool erasing) {
    attributes_.erase(erasing);
    return AcDbEntity::subErase(erasing);
}

Acad::ErrorStatus AcDbBlockReference::subTransformBy(const AcGeMatrix3d& transform) {
    const Acad::ErrorStatus status = setBlockTransform(transform * contentTransform());
    if (status != Acad::eOk) return status;
    attributes_.change<AcDbAttribute>(
        [&](AcDbAttribute& attribute) { transformPart(attribute, transform); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(position_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::dxfInFields(AcDbDxfFiler* filer) {
    return readReference(*filer, filer->record().all());
}

Acad::ErrorStatus AcDbBlockReference::readReference(AcDbDxfFiler& filer,
                                                    std::span<const headless::DxfTag> groups) {
    if (const auto status = AcDbEntity::dxfInFields(&filer); status != Acad::eOk) return status;
    field::read(filer, groups, field::Normal{normal_}, field::OcsPoint{10, position_, normal_},
                field::Symbol{2, AcDbBlockTableRecord::desc(), block_}, field::Real{41, scale_.sx},
                field::Real{42, scale_.sy}, field::Real{43, scale_.sz},
                field::Angle{50, rotation_});
    return Acad::eOk;
}

AcDbMInsertBlock::AcDbMInsertBlock(const AcGePoint3d& position, AcDbObjectId blockTableRecord,
                                   Adesk::Int16 columns, Adesk::Int16 rows, double columnSpacing,
                                   double rowSpacing)
    : AcDbBlockReference(position, blockTableRecord), columns_(columns), rows_(rows),
      columnSpacing_(columnSpacing), rowSpacing_(rowSpacing) {}

AcDbBlockReference::Array AcDbMInsertBlock::array() const {
    return {columns_, rows_, columnSpacing_, rowSpacing_};
}

Acad::ErrorStatus AcDbMInsertBlock::subTransformBy(const AcGeMatrix3d& transform) {
    const AcGeMatrix3d before = placing();
    const Acad::ErrorStatus status = AcDbBlockReference::subTransformBy(transform);
    if (status != Acad::eOk) return status;
    // The spacing as seen along the new axes, which may run the other way than before.
    const AcGeMatrix3d toNew = placing().inverse() * transform * before;
    columnSpacing_ = (toNew * AcGeVector3d(columnSpacing_, 0.0, 0.0)).x;
    rowSpacing_ = (toNew * AcGeVector3d(0.0, rowSpacing_, 0.0)).y;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMInsertBlock::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbBlockReference::dxfInFields(filer); status != Acad::eOk)
        return status;
    field::read(*filer, filer->record().all(), field::Real{44, columnSpacing_},
                field::Real{45, rowSpacing_}, field::Integer{70, columns_},
                field::Integer{71, rows_});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::writeReference(AcDbDxfFiler& filer,
                                                     const char* marker) const {
    if (const auto status = AcDbEntity::dxfOutFields(&filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {2,  10, 20, 30, 41, 42,  43,  44,
                                              45, 50, 66, 70, 71, 210, 220, 230};
    headless::DxfOutput& out = filer.output();
    out.subclass(marker, kCodes);
    bool attributes = false;
    attributes_.forEach<AcDbAttribute>([&](const AcDbAttribute&) { attributes = true; });
    out.integer(66, attributes ? 1 : 0, 0); // attributes follow
    out.symbol(2, block_);
    out.ocsPoint(10, position_, normal_);
    out.real(41, scale_.sx, 1.0);
    out.real(42, scale_.sy, 1.0);
    out.real(43, scale_.sz, 1.0);
    out.angle(50, rotation_, 0.0);
    const Array cells = array();
    out.integer(70, cells.columns, 1);
    out.integer(71, cells.rows, 1);
    out.real(44, cells.columnSpacing, 0.0);
    out.real(45, cells.rowSpacing, 0.0);
    out.normal(normal_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeReference(*filer, "AcDbBlockReference");
}

Acad::ErrorStatus AcDbMInsertBlock::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeReference(*filer, "AcDbMInsertBlock");
}

void AcDbBlockReference::forEachReference(const headless::ReferenceVisitor& visit) {
    AcDbEntity::forEachReference(visit);
    visit(block_, headless::ReferenceKind::kHardPointer);
}
