#include "table/drawn_parts.h"

#include <algorithm>
#include <iterator>

#include "blocks/exploded_reference.h"
#include "frame/object_handle.h"
#include "table/shown_text.h"
#include "table/straight_pieces.h"

namespace table {
namespace {

/// Takes references apart as long as their blocks hold no more than a drawing does.
class PartReader {
public:
    void read(const AcDbEntity& entity) {
        const auto* const reference = AcDbBlockReference::cast(&entity);
        if (reference == nullptr) return readPlain(entity);
        const AcDbObjectId layer = reference->layerId();
        const double pieces = taker_.piecesIn(*reference, layer);
        if (pieces > room_) return;
        room_ -= pieces;
        for (const auto& part : taker_.take(*reference, layer))
            readPlain(*part);
    }

    DrawnParts take() {
        std::erase_if(parts_.lines, [](const Ruling& line) { return !isAxisParallel(line); });
        return std::move(parts_);
    }

private:
    void readPlain(const AcDbEntity& entity) {
        if (const auto* line = AcDbLine::cast(&entity)) {
            parts_.lines.push_back({line->startPoint(), line->endPoint()});
        } else if (auto text = cellText(entity)) {
            if (AcDbText::cast(&entity) != nullptr) text->text = shownText(text->text);
            parts_.texts.push_back(std::move(*text));
        } else {
            std::ranges::copy(straightPieces(entity), std::back_inserter(parts_.lines));
        }
    }

    const AcUtBlockRefExploderParam all_;
    blocks::ReferenceTaker taker_{all_};
    double room_ = 1e6;
    DrawnParts parts_;
};

} // namespace

DrawnParts drawnParts(const AcArray<AcDbObjectId>& ids) {
    PartReader reader;
    for (const AcDbObjectId& id : ids)
        if (const ReadHandle<AcDbEntity> entity(id); entity) reader.read(*entity);
    return reader.take();
}

} // namespace table
