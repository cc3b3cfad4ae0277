// The clip of a block reference: what part of the block it shows.
#pragma once

#include <optional>
#include <vector>

#include "db/object.h"
#include "ge/arrays.h"
#include "ge/matrix3d.h"
#include "ge/point2d.h"
#include "ge/vector3d.h"

namespace headless {
struct DxfTag;
} // namespace headless

/// The distance of a clipping plane that is not there.
inline constexpr double ACDB_INFINITE_XCLIP_DEPTH = 1.0e+300;

/// Chooses what is shown of a block reference: an entry of the dictionary ACAD_FILTER in the
/// reference's extension dictionary.
class AcDbFilter : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbFilter);

    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    AcDbFilter() = default;
};

/// Shows what lies inside a boundary, or outside an inverted one; the entry SPATIAL.
///
/// The boundary lies in a plane of its own, the clip space. A point of the block stands to it as it
/// did in the world when the reference was clipped: the inverse of getOriginalInverseBlockXform
/// takes the block there, the inverse of getClipSpaceToWCSMatrix from there to the clip space.
class AcDbSpatialFilter : public AcDbFilter {
public:
    ACRX_DECLARE_MEMBERS(AcDbSpatialFilter);

    AcDbSpatialFilter() = default;

    /// @param points     two opposite corners of a rectangle, or three and more of a polygon.
    /// @param normal     of the clip space's plane, which is `elevation` away from the origin.
    /// @param frontClip  greatest height above that plane, ACDB_INFINITE_XCLIP_DEPTH for none;
    ///                   `backClip` the least, its negative for none.
    /// @param enabled    false shows everything.
    Acad::ErrorStatus getDefinition(AcGePoint2dArray& points, AcGeVector3d& normal,
                                    double& elevation, double& frontClip, double& backClip,
                                    Adesk::Boolean& enabled) const;
    /// The block then stands as it is in the world. eInvalidInput for fewer than two points.
    Acad::ErrorStatus setDefinition(const AcGePoint2dArray& points, const AcGeVector3d& normal,
                                    double elevation, double frontClip, double backClip,
                                    Adesk::Boolean enabled);
    /// True when what lies inside the boundary is hidden. Files have the boundary of the rest too,
    /// for programs that know no inverted clips; one that was changed since is not inverted.
    bool isInverted() const;

    AcGeMatrix3d& getClipSpaceToWCSMatrix(AcGeMatrix3d& matrix) const;
    AcGeMatrix3d& getOriginalInverseBlockXform(AcGeMatrix3d& matrix) const;

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    void readField(AcDbDxfFiler& filer, const headless::DxfTag& tag);
    std::optional<std::vector<AcGePoint2d>> invertedBoundary() const;

    std::vector<AcGePoint2d> points_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    AcGePoint3d origin_;
    AcGeMatrix3d inverseBlock_;
    AcGeMatrix3d toClipSpace_;
    std::optional<double> front_;
    std::optional<double> back_;
    bool enabled_ = true;
};
