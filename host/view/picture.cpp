#include "view/picture.h"

#include <algorithm>
#include <cmath>

#include "db/database.h"
#include "db/dictionary.h"
#include "db/dimension.h"
#include "db/layout.h"
#include "db/object_pointer.h"
#include "db/open.h"
#include "db/residence.h"
#include "ed/viewports.h"
#include "view/entity_painter.h"
#include "win/casing.h"

namespace headless {
namespace {

/// More pixels than this take more memory than a machine may have.
constexpr double kMostPixels = 400e6;
/// The drawing library's limit for pictures of pixels.
constexpr double kLongestSide = 32767.0;

/// The box of an entity that shows. A dimension counts what shows of its block: the points that it
/// was measured between may be anywhere.
Acad::ErrorStatus shownBox(const AcDbEntity& entity, Looks& looks, AcDbExtents& box) {
    const auto* const dimension = AcDbDimension::cast(&entity);
    const auto* const block = dimension == nullptr
                                  ? nullptr
                                  : Residence::peek<AcDbBlockTableRecord>(dimension->dimBlockId());
    if (block == nullptr) return entity.getGeomExtents(box);
    for (const AcDbObjectId id : block->entityIds()) {
        const auto* const part = Residence::peek<AcDbEntity>(id);
        AcDbExtents own;
        if (part != nullptr && looks.shows(part->layerId()) && part->extentsOf(own) == Acad::eOk)
            box.addExt(own);
    }
    if (isEmpty(box)) return Acad::eNullExtents;
    box.transformBy(AcGeMatrix3d::translation(dimension->dimBlockPosition().asVector()));
    return Acad::eOk;
}

/// The box of what shows in a space; empty when nothing does.
AcDbExtents shownExtents(AcDbObjectId space, Looks& looks) {
    AcDbExtents box;
    const auto* const block = Residence::peek<AcDbBlockTableRecord>(space);
    if (block == nullptr) return box;
    const AcDbObjectId own = sheetViewport(space);
    for (const AcDbObjectId id : block->entityIds()) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
        AcDbExtents seen;
        const bool shows =
            entity->visibility() == AcDb::kVisible && looks.shows(entity->layerId()) && id != own;
        if (shows && shownBox(*entity, looks, seen) == Acad::eOk) box.addExt(seen);
        entity->close();
    }
    return box;
}

/// The block of a layout, null for a name that no layout has. In drawings without layouts "Layout1"
/// is paper space.
AcDbObjectId spaceOf(const AcDbDatabase& db, const std::wstring& name) {
    if (name.empty()) return db.modelSpaceId();
    const auto* const layouts = Residence::peek<AcDbDictionary>(db.layoutDictionaryId());
    bool known = false;
    if (layouts != nullptr)
        for (const auto& entry : layouts->entries()) {
            const auto* const layout = Residence::peek<AcDbLayout>(entry.id);
            known = known || layout != nullptr;
            if (layout != nullptr && compareNoCase(layout->nameOf(), name) == 0)
                return layout->blockOf();
        }
    return !known && compareNoCase(name, L"Layout1") == 0 ? db.paperSpaceId() : AcDbObjectId();
}

bool isUsable(const PictureWindow& window) {
    const double width = window.right - window.left;
    const double height = window.top - window.bottom;
    return width > 0.0 && height > 0.0 && std::isfinite(width) && std::isfinite(height);
}

/// The box with a margin; a box without area gets one.
PictureWindow windowAround(const AcDbExtents& box) {
    constexpr double kMargin = 0.03;
    const AcGePoint3d low = box.minPoint();
    const AcGePoint3d high = box.maxPoint();
    double margin = std::max(high.x - low.x, high.y - low.y) * kMargin;
    if (!(margin > 0.0)) margin = 1.0;
    return {low.x - margin, low.y - margin, high.x + margin, high.y + margin};
}

EntityPainter::Settings settingsOf(const AcDbDatabase& db, const PictureOptions& options,
                                   const SheetMap& map) {
    constexpr double kMillimetresPerInch = 25.4;
    constexpr PictureColor kWhite{255, 255, 255, 255};
    constexpr PictureColor kBlack{0, 0, 0, 255};
    const double dotsPerInch = options.format == PictureFormat::kPdf ? 72.0 : 96.0;
    return {{map.scale(), dotsPerInch / kMillimetresPerInch, db.ltscale(),
             options.isDark ? kWhite : kBlack},
            pointStyle(db.settings().pdmode, db.settings().pdsize, map.scale(), options.height),
            options.isDark ? kBlack : kWhite,
            db.psltscale()};
}

} // namespace

std::variant<std::string, PictureFailure> drawPicture(AcDbDatabase& db,
                                                      const PictureOptions& options) {
    if (!(options.width >= 1.0 && options.height >= 1.0) ||
        std::max(options.width, options.height) > kLongestSide ||
        options.width * options.height > kMostPixels)
        return PictureFailure{"the picture's size is out of range"};
    const AcDbObjectId space = spaceOf(db, options.layout);
    if (space.isNull()) return PictureFailure{"the drawing has no such layout"};
    Looks looks;
    PictureWindow window;
    if (options.window) {
        window = *options.window;
        if (!isUsable(window)) return PictureFailure{"the window has no area"};
    } else {
        const AcDbExtents box = shownExtents(space, looks);
        if (isEmpty(box)) return PictureFailure{"nothing is visible in the drawing"};
        window = windowAround(box);
        if (!isUsable(window)) return PictureFailure{"the drawing is too large for a picture"};
    }

    Canvas canvas(options.format, options.width, options.height);
    const SheetMap map(window, options.width, options.height);
    const EntityPainter::Settings settings = settingsOf(db, options, map);
    canvas.fillAll(settings.background);
    EntityPainter painter(canvas, map, settings, looks);
    painter.paintSpace(space);
    std::string bytes = canvas.finish();
    if (bytes.empty()) return PictureFailure{"there is not enough memory for the picture"};
    return bytes;
}

} // namespace headless
