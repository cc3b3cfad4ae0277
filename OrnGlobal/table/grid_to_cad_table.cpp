#include "table/grid_to_cad_table.h"

#include <algorithm>

#include <adslib.h>
#include <dbents.h>

#include "OrnCore/zel_dwg.h"
#include "frame/object_handle.h"
#include "table/coordinates.h"
#include "table/ruling.h"
#include "table/straight_pieces.h"
#include "table/table_model.h"

namespace {

using table::Ruling;

std::span<const double> spanOf(const CArray<double, double>& values) {
    return {values.GetData(), static_cast<std::size_t>(values.GetSize())};
}

int refuseEmptyTable() {
    acutPrintf(L"\n请选择要导出的表格:找到 0 个.");
    return 0;
}

/// Draws a line for each piece of the polylines but the last entity's, and adds these to the list.
void explodePolylines(AcArray<AcDbObjectId>& ids) {
    AcArray<AcDbObjectId> drawn;
    for (int i = 0; i < ids.length() - 1; ++i) {
        const ReadHandle<AcDbEntity> entity(ids[i]);
        if (!entity) continue;
        for (const Ruling& piece : table::straightPieces(*entity)) {
            const AcDbObjectId line =
                CZelDwg::AddLine(piece.start, piece.end, AcDbObjectId::kNull, nullptr, nullptr);
            if (!line.isNull()) drawn.append(line);
        }
    }
    ids.append(drawn);
}

void appendEnds(const std::vector<Ruling>& lines, AcGePoint3dArray& starts,
                AcGePoint3dArray& ends) {
    for (const Ruling& line : lines) {
        starts.append(line.start);
        ends.append(line.end);
    }
}

/// Four lines are around one cell.
bool areTooFew(const AcGePoint3dArray& starts) { return starts.length() < 4; }

/// Lines by direction, pieces joined and in the order of the rows and columns.
table::SortedRulings ordered(CGridToCadTable& table, const AcGePoint3dArray& starts,
                             const AcGePoint3dArray& ends) {
    table::SortedRulings lines = table::byDirection(starts, ends);
    table.UniteLine(lines.columns.starts, lines.columns.ends);
    table.UniteLine(lines.rows.starts, lines.rows.ends);
    // Each list by itself: starts and ends belong together by rank from here on.
    for (AcGePoint3dArray* list : {&lines.columns.starts, &lines.columns.ends})
        table.SortPoints(*list, 1);
    for (AcGePoint3dArray* list : {&lines.rows.starts, &lines.rows.ends})
        table.SortPoints(*list, 0);
    return lines;
}

} // namespace

CGridToCadTable::CGridToCadTable() { exportParam_.grids.MatchParam(); }

void CGridToCadTable::SetScale(double horizontal, double vertical) {
    horizontalScale_ = horizontal;
    verticalScale_ = vertical;
}

int CGridToCadTable::AnalyseTable(AcArray<AcDbObjectId>& ids) {
    AcGePoint3dArray starts;
    AcGePoint3dArray ends;
    AcArray<AcDbObjectId> texts = RemoveBiasLineGetTxt(ids, starts, ends);
    if (areTooFew(starts)) return 0;
    const table::SortedRulings lines = ordered(*this, starts, ends);
    return analyse(lines.rows, lines.columns, [&texts] { return table::readTexts(texts); });
}

int CGridToCadTable::AnalyseLines(const AcGePoint3dArray& starts, const AcGePoint3dArray& ends,
                                  const std::vector<table::CellText>& texts) {
    if (areTooFew(starts)) return 0;
    const table::SortedRulings lines = ordered(*this, starts, ends);
    return analyse(lines.rows, lines.columns, [&texts] { return texts; });
}

AcArray<AcDbObjectId> CGridToCadTable::RemoveBiasLineGetTxt(AcArray<AcDbObjectId>& ids,
                                                            AcGePoint3dArray& starts,
                                                            AcGePoint3dArray& ends) {
    explodePolylines(ids);
    std::vector<Ruling> lines;
    AcArray<AcDbObjectId> others;
    for (const AcDbObjectId& id : ids) {
        const ReadHandle<AcDbObject> object(id);
        if (!object) continue;
        if (const auto* line = AcDbLine::cast(object.get()))
            lines.push_back({line->startPoint(), line->endPoint()});
        else
            others.append(id);
    }
    ids.removeAll();
    lines = table::withoutRepeats(lines);
    std::erase_if(lines, [](const Ruling& line) { return !table::isAxisParallel(line); });
    appendEnds(lines, starts, ends);
    return others;
}

void CGridToCadTable::UniteLine(AcGePoint3dArray& a, AcGePoint3dArray& b) {
    std::vector<Ruling> lines;
    for (int i = 0; i < std::min(a.length(), b.length()); ++i)
        lines.push_back({a[i], b[i]});
    table::uniteLines(lines);
    a.removeAll();
    b.removeAll();
    appendEnds(lines, a, b);
}

void CGridToCadTable::SortPoints(AcGePoint3dArray& points, int byX) {
    const auto fromLeft = [](const AcGePoint3d& a, const AcGePoint3d& b) { return a.x < b.x; };
    const auto fromTop = [](const AcGePoint3d& a, const AcGePoint3d& b) { return a.y > b.y; };
    if (byX != 0)
        std::stable_sort(points.begin(), points.end(), fromLeft);
    else
        std::stable_sort(points.begin(), points.end(), fromTop);
}

int CGridToCadTable::AnalyseCoordinate(AcGePoint3dArray& hStarts, AcGePoint3dArray& hEnds,
                                       AcGePoint3dArray& vStarts, AcGePoint3dArray& vEnds,
                                       AcArray<AcDbObjectId>& texts) {
    return analyse({hStarts, hEnds}, {vStarts, vEnds},
                   [&texts] { return table::readTexts(texts); });
}

int CGridToCadTable::analyse(const table::EndLists& rows, const table::EndLists& columns,
                             const table::TextReader& readTexts) {
    for (const AcGePoint3dArray* list : {&rows.starts, &rows.ends, &columns.starts, &columns.ends})
        if (list->isEmpty()) return refuseEmptyTable();
    const table::Coordinates coordinates = table::coordinatesOf(rows, columns);
    if (coordinates.columns.size() < 2 || coordinates.rows.size() < 2) return refuseEmptyTable();
    const auto cells = static_cast<long long>(coordinates.columns.size() - 1) *
                       static_cast<long long>(coordinates.rows.size() - 1);
    if (cells > table::kMostCells) {
        acutPrintf(L"\nARX ERROR: %s", acadErrorStatusText(Acad::eOutOfMemory));
        return 0;
    }

    table::addCells(model_, coordinates);
    table::fillCells(model_, coordinates, table::Crossings(rows, columns), readTexts);
    return 1;
}

void CGridToCadTable::RemoveRepeat(CArray<double, double>& values) {
    const std::vector<double> kept = table::withoutRepeats(spanOf(values));
    std::ranges::copy(kept, values.GetData());
    values.SetSize(static_cast<INT_PTR>(kept.size()));
}

int CGridToCadTable::DoubleAryFind(CArray<double, double>& values, double value) {
    return table::CoordinateIndex(spanOf(values)).find(value);
}

CString CGridToCadTable::GetText(AcArray<AcDbObjectId>& texts, AcGePoint3dArray& polygon,
                                 int& index) {
    const table::CellTexts::Content found = table::CellTexts(table::readTexts(texts)).in(polygon);
    index = found.index;
    return found.text;
}

void CGridToCadTable::ClearTableAttribute() {
    model_.rowLines = 0;
    model_.columnLines = 0;
    model_.cellsFound = 0;
    for (auto* sizes :
         {&model_.columnWidths, &model_.rowHeights, &model_.textHeights, &model_.widthFactors})
        sizes->RemoveAll();
    for (auto* numbers :
         {&model_.mergeColumns, &model_.mergeRows, &model_.mergeMoreColumns, &model_.mergeMoreRows,
          &model_.horizontalModes, &model_.verticalModes, &model_.colors})
        numbers->RemoveAll();
    model_.texts.RemoveAll();
    model_.textStyles.setPhysicalLength(0);
}

void CGridToCadTable::FillGrid() {
    SetGridSize(model_.rowLines, model_.columnLines);
    for (int column = 0; column < model_.columnLines; ++column)
        SetColumnWidth(column, model_.columnWidths[column]);
    for (int row = 0; row < model_.rowLines; ++row)
        SetRowHeight(row, model_.rowHeights[row]);
    for (int row = 1; row < model_.rowLines; ++row) {
        for (int column = 1; column < model_.columnLines; ++column) {
            const int at = (model_.columnLines - 1) * (row - 1) + column - 1;
            SetCell(row, column,
                    {.text = model_.texts[at],
                     .horizontal = model_.horizontalModes[at],
                     .vertical = model_.verticalModes[at],
                     .color = model_.colors[at],
                     .style = model_.textStyles[at],
                     .height = model_.textHeights[at],
                     .widthFactor = model_.widthFactors[at]});
        }
    }
    for (int i = 0; i < static_cast<int>(model_.mergeColumns.GetSize()); ++i)
        MergeCells({model_.mergeColumns[i], model_.mergeRows[i], model_.mergeMoreColumns[i],
                    model_.mergeMoreRows[i]});
}
