// References to blocks, single and in arrays.
#pragma once

#include <span>

#include "db/entity.h"
#include "db/geometry_sink.h"
#include "db/sequence_end.h"
#include "db/subentities.h"
#include "ge/scale3d.h"

class AcDbAttribute;
class AcDbBlockTableRecord;

/// A block's contents put in place: scaled about the block's base point, turned about the normal,
/// and moved to the position, which is in world coordinates.
class AcDbBlockReference : public AcDbEntity, public headless::SubentityOwner {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockReference);

    AcDbBlockReference() = default;
    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord)
        : block_(blockTableRecord), position_(position) {}

    AcDbObjectId blockTableRecord() const { return look(block_); }
    Acad::ErrorStatus setBlockTableRecord(AcDbObjectId block) { return change(block_, block); }
    /// The block whether or not the reference is open.
    AcDbObjectId blockOf() const { return block_; }
    /// The contents of all cells, whether or not the reference is open.
    headless::GeometrySink::Reference placedContents() const;
    AcGePoint3d position() const { return look(position_); }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position) {
        return change(position_, position);
    }
    AcGeScale3d scaleFactors() const { return look(scale_); }
    /// eInvalidInput for a factor of 0.
    Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
    /// Radians about the normal in the object coordinate system.
    double rotation() const { return look(rotation_); }
    Acad::ErrorStatus setRotation(double rotation) { return change(rotation_, rotation); }
    AcGeVector3d normal() const { return look(normal_); }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal) {
        return changeNormal(normal_, normal);
    }

    /// Maps the block's contents to the world, the block's base point to the position.
    AcGeMatrix3d blockTransform() const;
    /// Takes position, scale, rotation and normal from the transform. eCannotScaleNonUniformly when
    /// it is skewed.
    Acad::ErrorStatus setBlockTransform(const AcGeMatrix3d& transform);

    /// The reference takes the attribute over. The form with an id needs a resident reference
    /// (eNotInDatabase).
    Acad::ErrorStatus appendAttribute(AcDbAttribute* attribute);
    Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);
    Acad::ErrorStatus openAttribute(AcDbAttribute*& attribute, AcDbObjectId id, AcDb::OpenMode mode,
                                    bool openErased = false) const;
    Acad::ErrorStatus openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode);
    /// The caller deletes the iterator.
    AcDbObjectIterator* attributeIterator() const;

    /// Adds the parts that explode() gives to the block that the reference stands in, which must be
    /// open for writing or not at all; the reference stays. As explode, and eNotInDatabase.
    Acad::ErrorStatus explodeToOwnerSpace() const;

    /// The box of the contents, with the texts among them, under a further transform.
    Acad::ErrorStatus
    geomExtentsBestFit(AcDbExtents& extents,
                       const AcGeMatrix3d& parentTransform = AcGeMatrix3d::kIdentity) const;

    bool isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const override;
    void getEcs(AcGeMatrix3d& ecs) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

    bool takesSubentity(const AcDbEntity& part) const override;
    headless::Subentities& subentities() override { return attributes_; }

protected:
    Acad::ErrorStatus subErase(bool erasing) override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subExplode(headless::NewEntities& parts) const override;
    void subDescribe(headless::GeometrySink& sink) const override;
    bool keepsExtents() const override { return false; }

    /// The array of an array reference; one cell here.
    struct Array {
        int columns = 1;
        int rows = 1;
        double columnSpacing = 0.0;
        double rowSpacing = 0.0;
    };
    virtual Array array() const { return {}; }
    /// Reads the reference from those groups of its record.
    Acad::ErrorStatus readReference(AcDbDxfFiler& filer, std::span<const headless::DxfTag> groups);
    /// Writes the reference under its marker, which arrays have another one of.
    Acad::ErrorStatus writeReference(AcDbDxfFiler& filer, const char* marker) const;

    /// Object coordinates, turned: the axes that an array runs along.
    AcGeMatrix3d placing() const;
    /// blockTransform() whether or not the reference is open.
    AcGeMatrix3d contentTransform() const;

private:
    headless::Subentities attributes_;
    AcDbObjectId block_;
    AcGePoint3d position_;
    AcGeScale3d scale_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double rotation_ = 0.0;
};

/// A reference repeated in columns and rows, which run along the turned axes and are not scaled.
class AcDbMInsertBlock : public AcDbBlockReference {
public:
    ACRX_DECLARE_MEMBERS(AcDbMInsertBlock);

    AcDbMInsertBlock() = default;
    AcDbMInsertBlock(const AcGePoint3d& position, AcDbObjectId blockTableRecord,
                     Adesk::Int16 columns, Adesk::Int16 rows, double columnSpacing,
                     double rowSpacing);

    Adesk::Int16 columns() const { return look(columns_); }
    Acad::ErrorStatus setColumns(Adesk::Int16 columns) { return change(columns_, columns); }
    Adesk::Int16 rows() const { return look(rows_); }
    Acad::ErrorStatus setRows(Adesk::Int16 rows) { return change(rows_, rows); }
    double columnSpacing() const { return look(columnSpacing_); }
    Acad::ErrorStatus setColumnSpacing(double spacing) { return change(columnSpacing_, spacing); }
    double rowSpacing() const { return look(rowSpacing_); }
    Acad::ErrorStatus setRowSpacing(double spacing) { return change(rowSpacing_, spacing); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Array array() const override;

private:
    Adesk::Int16 columns_ = 1;
    Adesk::Int16 rows_ = 1;
    double columnSpacing_ = 0.0;
    double rowSpacing_ = 0.0;
};
