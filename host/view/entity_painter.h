// Draws the entities of a space with everything inside their references.
#pragma once

#include <optional>
#include <set>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "db/hatch.h"
#include "view/block_facts.h"
#include "view/crowd.h"
#include "view/letters.h"
#include "view/line_painter.h"
#include "view/path_sink.h"
#include "view/pen.h"
#include "view/point_mark.h"

class AcDbBlockReference;
class AcDbMline;
class AcDbViewport;

namespace headless {

class EntityPainter {
public:
    struct Settings {
        PenScale pen;
        PointStyle points;
        PictureColor background;
        bool linetypesFollowSheet = true; // In viewports they are as long as beside them.
    };

    EntityPainter(Canvas& canvas, const SheetMap& map, const Settings& settings, Looks& looks);

    /// Draws a block's entities in their draw order, as a space shows them.
    void paintSpace(AcDbObjectId block);

private:
    /// What an entity is seen through.
    struct View {
        AcGeMatrix3d toWorld;
        Traits outer;

        /// How much larger it makes things of the plane.
        double stretch() const;
    };

    void paintBlock(AcDbObjectId block, const View& view);
    void paintEntity(const AcDbEntity& entity, const View& view);
    void paintDrawn(const AcDbEntity& entity, const View& view, const Traits& traits);
    void paintReference(const AcDbBlockReference& reference, const View& view,
                        const Traits& traits);
    void paintClipped(const AcDbBlockReference& reference, const GeometrySink::Reference& contents,
                      const Traits& traits);
    void paintContents(const GeometrySink::Reference& reference, const Traits& traits);
    void paintCells(const GeometrySink::Reference& reference, const Traits& traits);
    void paintCrowd(const GeometrySink::Reference& reference, const Traits& traits, double parts);
    void putOff(PlacedBlock placed);
    int thinningOf(const GeometrySink::Reference& reference, double cells);
    void paintSpeck(const PlacedBlock& placed, const AcGePoint2d& at);
    std::optional<Traits> firstLook(AcDbObjectId block, const Traits& outer, int& tries);
    int strideOf(const AcGeVector3d& step) const;
    void paintAttributes(const AcDbBlockReference& reference, const View& view,
                         const Traits& traits);
    void paintViewport(const AcDbViewport& viewport, const Traits& traits);
    void paintFilled(const AcDbEntity& entity, const View& view, const Traits& traits);
    void paintWipeout(const AcDbEntity& entity, const View& view);
    void paintMline(const AcDbMline& mline, const View& view, const Traits& traits);
    /// What the entity is taken apart into.
    void paintParts(const AcDbEntity& whole, const View& view, const Traits& traits);
    void paintHatch(const AcDbHatch& hatch, const View& view, const Traits& traits);
    void paintText(const AcDbText& text, const View& view, const Traits& traits);
    void paintMText(const AcDbMText& text, const View& view, const Traits& traits);
    void paintPoint(const AcGePoint2d& at, const Pen& pen);

    Pen penFor(const Traits& traits, const View& view);
    PictureColor fillOf(const Traits& traits) const;
    /// Of lines, letters, and solids, as which arrows are drawn.
    PictureColor inkOf(const Traits& traits) const;
    bool isDrawn(const AcDbEntity& entity) const;
    bool comesToSheet(const AcDbEntity& reference, const View& view) const;
    const AcDbObjectIdArray& drawOrder(AcDbObjectId block);

    Canvas& canvas_;
    const SheetMap& map_;
    Settings settings_;
    Looks& looks_;
    Letters letters_;
    LinePainter lines_;
    std::vector<AcDbStub*> openBlocks_; // being drawn, outermost first
    std::unordered_map<AcDbStub*, AcDbObjectIdArray> orders_;
    double viewportScale_ = 1.0; // sheet units to a unit of what is being drawn
    std::size_t partsLeft_;      // that references may still show

    BlockFacts facts_;
    double share_ = 1.0; // How many of its parts a reference may show.
    /// Where contents are put off to: a level of a crowd.
    Crowd* crowd_ = nullptr;
    /// Pixels that have a speck in a colour; null where every part is drawn.
    using Specks = std::set<std::tuple<std::int64_t, std::int64_t, std::uint32_t>>;
    Specks* specks_ = nullptr;
};

} // namespace headless
