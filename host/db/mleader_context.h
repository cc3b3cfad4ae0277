// What a multileader looks like, as its record in a drawing file says.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "db/color.h"
#include "db/dxf_filer.h"
#include "db/open_mode.h"
#include "ge/point3d.h"
#include "ge/scale3d.h"
#include "ge/vector3d.h"

namespace headless {

/// Points and directions are in world coordinates, lengths drawing units, angles radians. Colours
/// by block are those of the multileader itself.
struct MLeaderContext {
    /// A chain from the arrow's tip towards the landing.
    struct Line {
        std::vector<AcGePoint3d> vertices;
        AcCmEntityColor color{AcCmEntityColor::kByBlock}; // by block: as all lines
        int index = 0;
    };
    /// Lines that end in one landing.
    struct Leader {
        std::vector<Line> lines;
        AcGePoint3d end; // where the landing begins
        AcGeVector3d direction = AcGeVector3d::kXAxis;
        double landing = 0.0;
        bool isPlaced = false; // has an end; else it is not drawn
        bool isDirected = false;
        bool isVertical = false; // joins the contents from above or below, without a landing

        void read(AcDbDxfFiler& filer, std::span<const DxfTag> groups);
        /// Where the landing meets the contents.
        AcGePoint3d foot() const;
    };
    struct Text {
        std::wstring contents;
        AcDbObjectId style;
        AcGePoint3d location;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        AcGeVector3d direction = AcGeVector3d::kXAxis;
        double width = 0.0; // times the scale
        double lineSpacing = 1.0;
        AcCmEntityColor color{AcCmEntityColor::kByBlock};
        int column = 1; // 1 the location is left, 2 in the middle, 3 right
        int flow = 1;
    };
    struct Block {
        AcDbObjectId record;
        AcGePoint3d location;
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        AcGeScale3d scale;
        double rotation = 0.0;
        AcCmEntityColor color{AcCmEntityColor::kByBlock};
    };
    /// What an attribute of the block says.
    struct Label {
        AcDbObjectId definition;
        std::wstring text;
    };
    struct ArrowHead {
        int line = 0; // its index
        AcDbObjectId block;
    };
    enum class LineKind { kNone, kStraight, kSpline };

    std::vector<Leader> leaders;
    std::optional<Text> text;
    std::optional<Block> block;
    std::vector<Label> labels;
    std::vector<ArrowHead> arrowHeads; // of lines that have another one than most
    AcDbObjectId arrowBlock;           // null: a filled triangle
    AcDbObjectId linetype;
    AcDbObjectId textStyle;
    AcGeVector3d xAxis = AcGeVector3d::kXAxis;
    AcGeVector3d yAxis = AcGeVector3d::kYAxis;
    double scale = 1.0;
    double textHeight = 0.0; // scaled
    double arrowSize = 0.0;  // scaled
    double gap = 0.0;        // between the text and its frame
    AcCmEntityColor lineColor{AcCmEntityColor::kByBlock};
    AcDb::LineWeight lineWeight = AcDb::kLnWtByBlock;
    LineKind lineKind = LineKind::kStraight;
    bool hasLanding = true;
    bool isFramed = false;

    /// Reads the multileader's own groups; what they do not say keeps its value.
    void read(AcDbDxfFiler& filer, std::span<const DxfTag> groups);
    void forEachReference(const std::function<void(AcDbObjectId&)>& visit);

    /// Of the plane that arrows lie in.
    AcGeVector3d normal() const;
    AcDbObjectId arrowBlockOf(const Line& line) const;
    /// From the arrow's tip to the contents.
    std::vector<AcGePoint3d> chain(const Leader& leader, const Line& line) const;

private:
    void readContext(AcDbDxfFiler& filer, std::span<const DxfTag> groups);
    void readText(AcDbDxfFiler& filer, std::span<const DxfTag> groups);
    void readBlock(AcDbDxfFiler& filer, std::span<const DxfTag> groups);
    void readLook(AcDbDxfFiler& filer, std::span<const DxfTag> groups);
    void readLists(AcDbDxfFiler& filer, std::span<const DxfTag> groups);

    bool reversed_ = false; // the normal
};

} // namespace headless
