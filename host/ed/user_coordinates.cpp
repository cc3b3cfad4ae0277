#include "ed/user_coordinates.h"

#include "db/state.h"
#include "ed/viewports.h"

namespace headless {
namespace {

struct Axes {
    AcGePoint3d& origin;
    AcGeVector3d& x;
    AcGeVector3d& y;
};

Axes axesOf(AcDbDatabase& db) {
    DrawingSettings& settings = db.settingsForWrite();
    if (isSheetCurrent(db)) return {settings.pucsorg, settings.pucsxdir, settings.pucsydir};
    return {settings.ucsorg, settings.ucsxdir, settings.ucsydir};
}

bool isRightHanded(const AcGeMatrix3d& matrix) {
    return matrix.isUniScaledOrtho() &&
           std::abs(matrix.det() - 1.0) < AcGeContext::gTol.equalVector();
}

} // namespace

AcGeMatrix3d userToWorld(const AcDbDatabase& db) {
    const DrawingSettings& s = db.settings();
    const bool paper = isSheetCurrent(db);
    // Files may hold axes that are no unit vectors, or not quite square to each other.
    const AcGeVector3d x = (paper ? s.pucsxdir : s.ucsxdir).normal();
    const AcGeVector3d z = x.crossProduct(paper ? s.pucsydir : s.ucsydir).normal();
    AcGeMatrix3d matrix;
    if (!z.isUnitLength()) return matrix;
    return matrix.setCoordSystem(paper ? s.pucsorg : s.ucsorg, x, z.crossProduct(x), z);
}

bool isWorldUcs(const AcDbDatabase& db) {
    return userToWorld(db).isEqualTo(AcGeMatrix3d::kIdentity);
}

} // namespace headless

Acad::ErrorStatus acedGetCurrentUCS(AcGeMatrix3d& matrix) {
    const AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr) return Acad::eNoDatabase;
    matrix = headless::userToWorld(*db);
    return Acad::eOk;
}

Acad::ErrorStatus acedSetCurrentUCS(const AcGeMatrix3d& matrix) {
    AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr) return Acad::eNoDatabase;
    if (!headless::isRightHanded(matrix)) return Acad::eInvalidInput;
    const headless::Axes axes = headless::axesOf(*db);
    AcGeVector3d unused;
    matrix.getCoordSystem(axes.origin, axes.x, axes.y, unused);
    return Acad::eOk;
}
