#include "table/cell_texts.h"

#include <algorithm>

#include "OrnCore/text_info.h"
#include "OrnCore/zel_dwg.h"
#include "OrnCore/zel_text.h"
#include "frame/object_handle.h"

namespace table {
namespace {

constexpr double kOnEdge = 1e-6; // a text this far from an outline still stands in it

CellText read(const AcDbText& entity) {
    const TextInfo drawn{.style = entity.textStyle(),
                         .widthFactor = entity.widthFactor(),
                         .height = entity.height()};
    CellText text{.text = ZelText::textString(entity),
                  .middle = entity.position(),
                  .horizontal = entity.horizontalMode(),
                  .vertical = entity.verticalMode(),
                  .color = entity.colorIndex(),
                  .style = drawn.style,
                  .height = drawn.height,
                  .widthFactor = drawn.widthFactor};
    const double width = CZelDwg::GetTextWidth(text.text, drawn);
    CZelDwg::MovePtTo(text.middle, width / 2.0, entity.rotation());
    return text;
}

AcDb::TextHorzMode horizontalOf(AcDbMText::AttachmentPoint attachment) {
    constexpr AcDb::TextHorzMode kColumns[] = {AcDb::kTextLeft, AcDb::kTextCenter,
                                               AcDb::kTextRight};
    return kColumns[(attachment - AcDbMText::kTopLeft) % 3];
}

AcDb::TextVertMode verticalOf(AcDbMText::AttachmentPoint attachment) {
    constexpr AcDb::TextVertMode kRows[] = {AcDb::kTextTop, AcDb::kTextVertMid, AcDb::kTextBottom};
    return kRows[(attachment - AcDbMText::kTopLeft) / 3];
}

CString wordsOf(const AcDbMText& entity) {
    ACHAR* words = entity.text();
    const CString text(words);
    acutDelString(words);
    return text;
}

std::optional<CellText> read(const AcDbMText& entity) {
    AcDbExtents box;
    if (entity.getGeomExtents(box) != Acad::eOk) return std::nullopt;
    return CellText{.text = wordsOf(entity),
                    .middle = box.minPoint() + (box.maxPoint() - box.minPoint()) / 2.0,
                    .horizontal = horizontalOf(entity.attachment()),
                    .vertical = verticalOf(entity.attachment()),
                    .color = entity.colorIndex(),
                    .style = entity.textStyle(),
                    .height = entity.textHeight(),
                    .widthFactor = 1.0};
}

std::vector<orncore::Box> placesOf(const std::vector<CellText>& texts) {
    std::vector<orncore::Box> places;
    places.reserve(texts.size());
    for (const CellText& text : texts)
        places.push_back({text.middle.x, text.middle.y, text.middle.x, text.middle.y});
    return places;
}

orncore::Box around(const AcGePoint3dArray& outline) {
    orncore::Box box{outline[0].x, outline[0].y, outline[0].x, outline[0].y};
    for (const AcGePoint3d& corner : outline) {
        box = {std::min(box.minX, corner.x), std::min(box.minY, corner.y),
               std::max(box.maxX, corner.x), std::max(box.maxY, corner.y)};
    }
    return box;
}

} // namespace

std::vector<CellText> readTexts(AcArray<AcDbObjectId>& ids) {
    std::vector<CellText> texts;
    AcArray<AcDbObjectId> kept;
    for (const AcDbObjectId& id : ids) {
        const ReadHandle<AcDbText> text(id);
        if (!text) continue;
        texts.push_back(read(*text));
        kept.append(id);
    }
    ids = std::move(kept);
    return texts;
}

std::optional<CellText> cellText(const AcDbEntity& entity) {
    if (const auto* text = AcDbText::cast(&entity)) return read(*text);
    if (const auto* text = AcDbMText::cast(&entity)) return read(*text);
    return std::nullopt;
}

CellTexts::CellTexts(std::vector<CellText> texts)
    : texts_(std::move(texts)), places_(placesOf(texts_)) {}

CellTexts::Content CellTexts::in(const AcGePoint3dArray& outline) const {
    Content content;
    if (outline.isEmpty()) return content;
    std::vector<std::size_t> near;
    places_.find(orncore::widened(around(outline), 2.0 * kOnEdge), near);
    for (const std::size_t i : near) {
        if (CZelDwg::PtInClosePolygon(&outline, texts_[i].middle, kOnEdge) == -1) continue;
        content.text += texts_[i].text;
        content.index = static_cast<int>(i);
    }
    return content;
}

} // namespace table
