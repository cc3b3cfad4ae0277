#include "numbering.h"

#include <algorithm>
#include <memory>

#include <dbents.h>
#include <dbpl.h>

#include "OrnCore/rw_xdata.h"
#include "OrnCore/zel_dwg.h"
#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"
#include "geometry/board_numbers.h"
#include "geometry/extent_order.h"
#include "geometry/line_tools.h"
#include "layerpick/numbered_styles.h"
#include "model_entities.h"
#include "text/string_list.h"

namespace board {
namespace {

// Numbers of the product's configuration.
constexpr unsigned int kNumberLayer = 401;
constexpr unsigned int kNumberStyle = 3;

CString layerOf(const AcDbEntity& entity) {
    CString name;
    AcUtSymTbl::symbolIdToName(entity.layerId(), name);
    return name;
}

std::vector<AcDbObjectId> boardsOn(AcDbDatabase* db, const std::vector<CString>& layers) {
    std::vector<AcDbObjectId> boards;
    forEachModelEntity(db, [&](const AcDbEntity& entity) {
        const AcDbPolyline* const outline = AcDbPolyline::cast(&entity);
        if (outline == nullptr || !outline->isClosed()) return;
        if (layers.empty() || kelmor::IsStrInVecString(layerOf(entity), layers, 0) != 0)
            boards.push_back(entity.objectId());
    });
    return boards;
}

void sortForReading(std::vector<AcDbObjectId>& boards, int method) {
    const int before = SortPline::nSortMethod;
    SortPline::nSortMethod = method;
    for (const AcDbObjectId& id : boards)
        NoteExtentLess(id);
    // Boards that overlap in a chain may compare inconsistently, which only this sort bears.
    std::stable_sort(boards.begin(), boards.end(), SortPline());
    InitExtentLess();
    SortPline::nSortMethod = before;
}

/// Large enough to read on the sheet, yet within the board.
double textHeightFor(const AcDbExtents& board) {
    constexpr double kUsual = 350.0; // mm, 3.5 mm on a sheet of 1:100
    constexpr double kShare = 0.3;
    const AcGeVector3d size = board.maxPoint() - board.minPoint();
    return std::min(kUsual, std::min(size.x, size.y) * kShare);
}

/// The middle of the board's extents when it lies inside, else some point that does.
AcGePoint3d placeFor(AcDbPolyline& outline, const AcDbExtents& extents) {
    constexpr double kTolerance = 1e-6;
    const AcGePoint3d middle = CZelDwg::GetLineMidPoint(extents.minPoint(), extents.maxPoint());
    const bool inside = CZelDwg::PtInClosePolygon(&outline, middle, kTolerance) > 0;
    return inside ? middle : LineTools::GetPtInPolyLine(&outline);
}

/// Null when the board cannot be opened or the text not be added.
AcDbObjectId addNumber(AcDbDatabase* db, AcDbObjectId board, int number) {
    const AcDbExtents extents = CZelDwg::GetGeomExtents(board);
    const double height = textHeightFor(extents);
    if (!(height > 0.0)) return AcDbObjectId::kNull;
    AcGePoint3d point;
    {
        const WriteHandle<AcDbPolyline> outline(board);
        if (!outline) return AcDbObjectId::kNull;
        point = placeFor(*outline, extents);
    }
    CString shown;
    shown.Format(L"%d", number);
    auto text =
        std::make_unique<AcDbText>(point, shown, kelmor::GetTextStyleId(kNumberStyle), height, 0.0);
    text->setHorizontalMode(AcDb::kTextMid);
    text->setAlignmentPoint(point);
    const AcDbObjectId layer = kelmor::GetLayerId(kNumberLayer);
    if (!layer.isNull()) text->setLayer(layer);
    const AcDbObjectId id = CZelDwg::AddEntity(text.get(), db, 0, 1);
    if (id.isNull()) return id;
    text.release(); // the database has it
    rwXData::WriteXdataPnt(id, Common::kBoardNumberPoint, point);
    return id;
}

int countTexts(AcDbDatabase* db) {
    int count = 0;
    forEachModelEntity(
        db, [&](const AcDbEntity& entity) { count += AcDbText::cast(&entity) != nullptr ? 1 : 0; });
    return count;
}

} // namespace

std::vector<NumberedBoard> numberBoards(AcDbDatabase* db, const NumberRequest& request) {
    std::vector<AcDbObjectId> boards = boardsOn(db, request.layers);
    sortForReading(boards, request.method);
    std::vector<NumberedBoard> numbered;
    for (const AcDbObjectId& id : boards) {
        NumberedBoard entry{.number = static_cast<int>(numbered.size()) + 1};
        entry.outline = id.handle();
        if (const ReadHandle<AcDbEntity> outline(id); outline) entry.layer = layerOf(*outline);
        entry.text = addNumber(db, id, entry.number).handle();
        numbered.push_back(entry);
    }
    return numbered;
}

int clearBoardNumbers(AcDbDatabase* db, const std::vector<CString>& outlines,
                      const CString& numbers) {
    AcDbObjectIdArray ids;
    for (const AcDbObjectId& id : boardsOn(db, outlines))
        ids.append(id);
    const int before = countTexts(db);
    Common::ClearBoardNumber(ids, numbers.IsEmpty() ? kelmor::GetLayerName(kNumberLayer) : numbers);
    return before - countTexts(db);
}

} // namespace board
