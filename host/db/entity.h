// What all things that can be drawn have in common: layer, colour, linetype and where they are.
#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "db/beside_state.h"
#include "db/change_watch.h"
#include "db/color.h"
#include "db/extents.h"
#include "db/intersect_type.h"
#include "db/object.h"
#include "db/subentity_path.h"
#include "ge/arrays.h"
#include "ge/matrix3d.h"
#include "ge/plane.h"
#include "ge/point3d.h"
#include "ge/vector3d.h"

class AcDbEntity;

namespace headless {

class DxfOutput;
class EntityIndex;
class GeometrySink;
struct DxfTag;
using NewEntities = std::vector<std::unique_ptr<AcDbEntity>>;

} // namespace headless

/// A thing in a drawing: owned by a block table record, on a layer, with a place in the world.
class AcDbEntity : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbEntity);

    AcDbObjectId blockId() const;

    AcDbObjectId layerId() const { return layerId_; }
    /// The layer's name; the platform's callers free it with acutDelString.
    ACHAR* layer() const;
    Acad::ErrorStatus layer(class AcString& name) const;
    /// eKeyNotFound for a name that is no layer of the entity's (else the working) database.
    Acad::ErrorStatus setLayer(const ACHAR* name, bool doSubents = true,
                               bool allowHiddenLayer = false);
    Acad::ErrorStatus setLayer(AcDbObjectId layer, bool doSubents = true,
                               bool allowHiddenLayer = false);

    AcCmColor color() const { return AcCmColor(color_); }
    AcCmEntityColor entityColor() const { return color_; }
    Adesk::UInt16 colorIndex() const { return color_.colorIndex(); }
    Acad::ErrorStatus setColor(const AcCmColor& color, bool doSubents = true,
                               AcDbDatabase* db = nullptr);
    /// 0 by block, 1 to 255, 256 by layer; anything else eBadColorIndex.
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 index, bool doSubents = true);

    AcCmTransparency transparency() const { return transparency_; }
    Acad::ErrorStatus setTransparency(const AcCmTransparency& transparency, bool doSubents = true);

    AcDbObjectId linetypeId() const { return linetypeId_; }
    ACHAR* linetype() const;
    Acad::ErrorStatus setLinetype(const ACHAR* name, bool doSubents = true);
    Acad::ErrorStatus setLinetype(AcDbObjectId linetype, bool doSubents = true);
    double linetypeScale() const { return linetypeScale_; }
    Acad::ErrorStatus setLinetypeScale(double scale, bool doSubents = true);
    AcDb::LineWeight lineWeight() const { return lineWeight_; }
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight, bool doSubents = true);

    AcDbObjectId materialId() const { return materialId_; }
    Acad::ErrorStatus setMaterial(AcDbObjectId material, bool doSubents = true);

    AcDb::Visibility visibility() const { return visibility_; }
    Acad::ErrorStatus setVisibility(AcDb::Visibility visibility, bool doSubents = true);

    /// Takes layer, colour, linetype and so on from the other entity.
    Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* other, bool doSubents = true);
    /// Layer, colour, linetype and so on of the database's current settings.
    void setDatabaseDefaults(AcDbDatabase* db = nullptr);

    /// The box around the entity in world coordinates, exact for every curve; computed once and
    /// kept until the entity changes. eNullExtents when it occupies no place (an empty block
    /// reference), eInvalidExtents when it has no bounds (a ray).
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const {
        assertReadEnabled();
        return extentsOf(extents);
    }
    /// The same whether or not the entity is open.
    Acad::ErrorStatus extentsOf(AcDbExtents& extents) const {
        if (!extents_) return findExtents(extents);
        extents = *extents_;
        return Acad::eOk;
    }

    /// Appends the points where the drawn geometry of both meets: of curves themselves, of texts
    /// the sides of their boxes, of hatches their loops, of references the contents.
    ///
    /// Curves that lie on each other along a stretch have no points there. The tolerance is the
    /// global one for points, and 1e-12 of the largest coordinate.
    /// @param type  which curve goes on beyond its ends: lines straight on, arcs all the way
    /// around,
    ///              polylines by their first and last segments; splines and closed curves never do.
    Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                    AcGePoint3dArray& points, Adesk::GsMarker thisMarker = 0,
                                    Adesk::GsMarker otherMarker = 0) const;
    /// Where both seem to meet when seen straight down on a plane; the points lie on this entity.
    Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                    const AcGePlane& plane, AcGePoint3dArray& points,
                                    Adesk::GsMarker thisMarker = 0,
                                    Adesk::GsMarker otherMarker = 0) const;

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& transform);

    /// Shows the entity highlighted until unhighlight, however often it is asked; no part of the
    /// entity's state, so being open for reading is enough. eNotInDatabase for an entity that is
    /// in no drawing, eNotApplicable for a path that names anything but the whole of this entity.
    Acad::ErrorStatus highlight(const AcDbFullSubentPath& path = kNullSubent,
                                Adesk::Boolean highlightAll = Adesk::kFalse) const;
    /// Errors as above; eOk for one that is not highlighted.
    Acad::ErrorStatus unhighlight(const AcDbFullSubentPath& path = kNullSubent,
                                  Adesk::Boolean highlightAll = Adesk::kFalse) const;

    /// A new entity, in no database, like this one under the transform; the caller owns it. Circles
    /// and arcs become ellipses where they must. Else as transformBy, with a null copy.
    Acad::ErrorStatus getTransformedCopy(const AcGeMatrix3d& transform, AcDbEntity*& copy) const;
    /// Appends new entities, in no database, that together look like this one, with its layer,
    /// colour and so on; the caller owns them. eCannotExplodeEntity for what has no parts,
    /// eDegenerateGeometry for polylines without length.
    Acad::ErrorStatus explode(AcDbVoidPtrArray& entities) const;

    /// Points of the given kinds that pieces of the entity may be grabbed by.
    Acad::ErrorStatus getGripPoints(AcGePoint3dArray& points) const;

    virtual bool isPlanar() const { return false; }
    virtual Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const;
    /// The transform from the entity's own coordinates (by its normal) to the world's.
    virtual void getEcs(AcGeMatrix3d& ecs) const { ecs = AcGeMatrix3d::kIdentity; }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

    // The host's own: these work whether or not the entity is open.

    /// See getTransformedCopy.
    Acad::ErrorStatus transformedCopy(const AcGeMatrix3d& transform,
                                      std::unique_ptr<AcDbEntity>& copy) const;
    /// See explode.
    Acad::ErrorStatus takeApart(headless::NewEntities& parts) const { return subExplode(parts); }
    /// Layer, colour, linetype and so on.
    void copyProperties(const AcDbEntity& other);

protected:
    AcDbEntity() = default;

    /// The box in world coordinates, see getGeomExtents.
    virtual Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const;
    virtual Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform);
    virtual Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const;
    virtual Acad::ErrorStatus subExplode(headless::NewEntities& parts) const;
    /// The same thing as an entity that takes uneven scales, if there is one.
    virtual std::unique_ptr<AcDbEntity> unevenForm() const { return nullptr; }
    /// Tells the sink the entity's drawn geometry in world coordinates: what extents, pictures and
    /// picks are made from. Called whether or not the entity is open.
    virtual void subDescribe(headless::GeometrySink& sink) const;
    /// False when the box depends on other objects too, so that it can only be kept while those are
    /// watched.
    virtual bool keepsExtents() const { return true; }
    void beforeChange() override {
        extents_.reset();
        headless::noteChange(*this);
    }

    /// Transforms a part of this entity, whether or not it is open.
    static Acad::ErrorStatus transformPart(AcDbEntity& part, const AcGeMatrix3d& transform) {
        part.beforeChange();
        return part.subTransformBy(transform);
    }
    /// Stores the unit vector; eInvalidInput for a vector without length.
    Acad::ErrorStatus changeNormal(AcGeVector3d& member, const AcGeVector3d& normal);

private:
    friend class headless::ChangeWatch;
    friend class headless::EntityIndex;
    friend class headless::GeometrySink;

    Acad::ErrorStatus findExtents(AcDbExtents& extents) const;
    /// @param name  in a colour book, empty for a colour of no book.
    void takeColor(const AcCmEntityColor& color, std::wstring_view name);
    template <class T>
    Acad::ErrorStatus changeLook(T& member, const T& value) {
        assertLooksWriteEnabled();
        member = value;
        return Acad::eOk;
    }
    /// Calls `apply` with each vertex or attribute of the entity, whether or not it is open.
    void forEachSubentity(const std::function<void(AcDbEntity&)>& apply);
    void readProperty(AcDbDxfFiler& filer, const headless::DxfTag& tag);
    void readColorIndex(AcDbDxfFiler& filer, const headless::DxfTag& tag);
    void writeLook(headless::DxfOutput& out) const;

    // Beside what opening an object looks at.
    mutable headless::Derived<AcDbExtents> extents_;
    AcDbObjectId layerId_;
    AcDbObjectId linetypeId_; // Null until the database sets it: ByLayer.
    AcDbObjectId materialId_;
    AcCmEntityColor color_;
    AcCmTransparency transparency_;
    AcDb::LineWeight lineWeight_ = AcDb::kLnWtByLayer;
    AcDb::Visibility visibility_ = AcDb::kVisible;
    double linetypeScale_ = 1.0;
};
