#include "db/mleader_context.h"

#include <algorithm>

#include "db/named_fields.h"

namespace headless {
namespace {

using Tags = std::span<const DxfTag>;

// Nested parts of the record stand between a group of one code and one of the next.
constexpr int kContext = 300;
constexpr int kLeader = 302;
constexpr int kLine = 304;

/// The groups before the first one of that code.
Tags before(Tags tags, int code) {
    const auto found =
        std::find_if(tags.begin(), tags.end(), [code](const DxfTag& t) { return t.code == code; });
    return tags.first(static_cast<std::size_t>(found - tags.begin()));
}

/// The next part that begins with that code, which `rest` then begins behind; nothing, and `rest`
/// stays, where there is none. A part that does not end reaches to the end.
std::optional<Tags> takePart(Tags& rest, int code) {
    const std::size_t begin = before(rest, code).size();
    if (begin == rest.size()) return std::nullopt;
    const Tags inner = rest.subspan(begin + 1);
    const Tags part = before(inner, code + 1);
    rest = inner.subspan(std::min(part.size() + 1, inner.size()));
    return part;
}

/// A colour with its kind in the highest byte; another value than any of those changes nothing.
struct PackedColor {
    int code;
    AcCmEntityColor& value;

    bool take(const DxfTag& tag, AcDbDxfFiler& /*filer*/) {
        if (tag.code != code) return false;
        AcCmEntityColor color;
        if (color.setColor(static_cast<Adesk::UInt32>(tag.integer())) == Acad::eOk) value = color;
        return true;
    }
};

MLeaderContext::Line readLine(AcDbDxfFiler& filer, Tags groups) {
    MLeaderContext::Line line;
    field::read(filer, groups, field::Points{10, line.vertices}, field::Integer{91, line.index},
                PackedColor{92, line.color});
    return line;
}

} // namespace

void MLeaderContext::Leader::read(AcDbDxfFiler& filer, Tags groups) {
    field::read(filer, before(groups, kLine), field::Flag{290, isPlaced},
                field::Flag{291, isDirected}, field::Point{10, end}, field::Point{11, direction},
                field::Real{40, landing});
    while (const auto line = takePart(groups, kLine))
        lines.push_back(readLine(filer, *line));
    field::read(filer, groups, field::Flag{271, isVertical});
}

AcGePoint3d MLeaderContext::Leader::foot() const {
    return isVertical || !isDirected ? end : end + direction.normal() * landing;
}

void MLeaderContext::read(AcDbDxfFiler& filer, Tags groups) {
    const Tags head = before(groups, kContext);
    if (const auto context = takePart(groups, kContext)) {
        readLook(filer, head);
        readContext(filer, *context);
    }
    readLook(filer, groups);
    readLists(filer, groups);
}

void MLeaderContext::readContext(AcDbDxfFiler& filer, Tags groups) {
    const Tags own = before(groups, kLeader);
    bool hasText = false;
    bool hasBlock = false;
    field::read(filer, own, field::Real{40, scale}, field::Real{41, textHeight},
                field::Real{140, arrowSize}, field::Real{145, gap}, field::Point{111, xAxis},
                field::Point{112, yAxis}, field::Flag{297, reversed_}, field::Flag{290, hasText},
                field::Flag{296, hasBlock});
    if (hasText) readText(filer, own);
    if (hasBlock) readBlock(filer, own);
    while (const auto leader = takePart(groups, kLeader))
        leaders.emplace_back().read(filer, *leader);
}

void MLeaderContext::readText(AcDbDxfFiler& filer, Tags groups) {
    Text& read = text.emplace();
    AcGeVector3d direction;
    field::read(filer, groups, field::Text{304, read.contents}, field::Id{340, read.style},
                field::Point{11, read.normal}, field::Point{12, read.location},
                field::Point{13, direction}, field::Real{43, read.width},
                field::Real{45, read.lineSpacing}, PackedColor{90, read.color},
                field::Integer{171, read.column}, field::Integer{172, read.flow});
    read.normal = readNormal(read.normal);
    if (!direction.isZeroLength()) read.direction = direction.normal();
    read.column = std::clamp(read.column, 1, 3);
}

void MLeaderContext::readBlock(AcDbDxfFiler& filer, Tags groups) {
    Block& read = block.emplace();
    AcGeVector3d scaling(1.0, 1.0, 1.0);
    field::read(filer, groups, field::Id{341, read.record}, field::Point{14, read.normal},
                field::Point{15, read.location}, field::Point{16, scaling},
                field::Real{46, read.rotation}, PackedColor{93, read.color});
    read.normal = readNormal(read.normal);
    read.scale = {scaling.x, scaling.y, scaling.z};
}

void MLeaderContext::readLook(AcDbDxfFiler& filer, Tags groups) {
    const auto kinds = [this](const DxfTag& tag) {
        constexpr int kLastKind = static_cast<int>(LineKind::kSpline);
        if (tag.code == 170 && tag.integer() >= 0 && tag.integer() <= kLastKind)
            lineKind = static_cast<LineKind>(tag.integer());
        return tag.code == 170;
    };
    field::read(filer, groups, kinds, PackedColor{91, lineColor}, field::Id{341, linetype},
                field::Integer{171, lineWeight}, field::Flag{291, hasLanding},
                field::Id{342, arrowBlock}, field::Id{343, textStyle}, field::Flag{292, isFramed});
}

void MLeaderContext::readLists(AcDbDxfFiler& filer, Tags groups) {
    for (const DxfTag& tag : groups) {
        if (tag.code == 94) arrowHeads.push_back({static_cast<int>(tag.integer()), {}});
        if (tag.code == 345 && !arrowHeads.empty()) arrowHeads.back().block = filer.objectId(tag);
        if (tag.code == 330) labels.push_back({filer.objectId(tag), {}});
        if (tag.code == 302 && !labels.empty()) labels.back().text = filer.text(tag);
    }
}

void MLeaderContext::forEachReference(const std::function<void(AcDbObjectId&)>& visit) {
    for (AcDbObjectId* const id : {&arrowBlock, &linetype, &textStyle})
        visit(*id);
    if (text) visit(text->style);
    if (block) visit(block->record);
    for (Label& label : labels)
        visit(label.definition);
    for (ArrowHead& head : arrowHeads)
        visit(head.block);
}

AcGeVector3d MLeaderContext::normal() const {
    const AcGeVector3d normal = readNormal(xAxis.crossProduct(yAxis));
    return reversed_ ? -normal : normal;
}

AcDbObjectId MLeaderContext::arrowBlockOf(const Line& line) const {
    const auto own = std::find_if(arrowHeads.begin(), arrowHeads.end(),
                                  [&line](const auto& head) { return head.line == line.index; });
    return own == arrowHeads.end() ? arrowBlock : own->block;
}

std::vector<AcGePoint3d> MLeaderContext::chain(const Leader& leader, const Line& line) const {
    std::vector<AcGePoint3d> points = line.vertices;
    const AcGePoint3d foot = leader.foot();
    const bool breaks = hasLanding && lineKind == LineKind::kStraight;
    if (breaks && !leader.end.isEqualTo(foot)) points.push_back(leader.end);
    points.push_back(foot);
    return points;
}

} // namespace headless
