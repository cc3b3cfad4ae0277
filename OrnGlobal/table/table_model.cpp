#include "table/table_model.h"

#include <cstdlib>
#include <optional>

#include "OrnCore/zel_dwg.h"
#include "table/coordinates.h"

namespace table {
namespace {

void setSizes(CArray<double, double>& sizes, std::span<const double> coordinates,
              double direction) {
    sizes.SetSize(static_cast<INT_PTR>(coordinates.size()));
    sizes[0] = CDrawGrid::kHeaderSize;
    for (std::size_t i = 1; i < coordinates.size(); ++i)
        sizes[static_cast<INT_PTR>(i)] =
            direction * (coordinates[i] - coordinates[i - 1]) / TableModel::kUnitsPerSize;
}

/// New elements of a parallel list.
template <class T>
void addToEnd(CArray<T, T>& list, INT_PTR count, T value) {
    if (count > 0) list.InsertAt(list.GetSize(), value, count);
}

/// Writes the cells of one table into its model.
class CellWriter {
public:
    CellWriter(TableModel& model, const Coordinates& coordinates, const TextReader& readTexts)
        : model_(model), columns_(coordinates.columns), rows_(coordinates.rows),
          readTexts_(readTexts) {}

    void write(const CellOutline& cell) {
        ++model_.cellsFound;
        const int left = columns_.find(cell.topLeft.x);
        const int right = columns_.find(cell.topRight.x);
        const int top = rows_.find(cell.topLeft.y);
        const int bottom = rows_.find(cell.bottomLeft.y);
        if (left != -1 && right != -1 && top != -1 && bottom != -1)
            writeMerge(left, top, right, bottom);
        if (left != -1 && top != -1) writeText(cell, left, top);
    }

private:
    void writeMerge(int left, int top, int right, int bottom) {
        if (std::abs(right - left) < 2 && std::abs(bottom - top) < 2) return;
        model_.mergeColumns.Add(left + 1);
        model_.mergeRows.Add(top + 1);
        model_.mergeMoreColumns.Add(std::abs(right - left - 1));
        model_.mergeMoreRows.Add(std::abs(bottom - top - 1));
    }

    void writeText(const CellOutline& cell, int left, int top) {
        outline_.setLogicalLength(0);
        for (const AcGePoint3d& corner :
             {cell.topLeft, cell.topRight, cell.bottomRight, cell.bottomLeft})
            outline_.append(corner);
        CellTexts::Content content = texts().in(outline_);
        const INT_PTR at = INT_PTR{model_.columnLines - 1} * top + left;
        if (content.index == -1 || at >= model_.texts.GetSize()) return;

        const CellText& last = texts().at(content.index);
        model_.texts[at] = content.text.Trim();
        model_.horizontalModes[at] = last.horizontal;
        model_.verticalModes[at] = last.vertical;
        model_.colors[at] = last.color;
        model_.textStyles[static_cast<int>(at)] = last.style;
        model_.textHeights[at] = last.height;
        model_.widthFactors[at] = last.widthFactor;
    }

    /// The candidates stay as they are until a cell asks for them.
    const CellTexts& texts() {
        if (!texts_) texts_.emplace(readTexts_());
        return *texts_;
    }

    TableModel& model_;
    CoordinateIndex columns_;
    CoordinateIndex rows_;
    const TextReader& readTexts_;
    std::optional<CellTexts> texts_;
    AcGePoint3dArray outline_;
};

} // namespace

Coordinates coordinatesOf(const EndLists& rows, const EndLists& columns) {
    std::vector<double> x;
    for (const AcGePoint3d& start : columns.starts)
        x.push_back(CZelDwg::GetUprightPoint(start, rows.starts.last(), rows.ends.last()).x);
    std::vector<double> y;
    for (const AcGePoint3d& start : rows.starts)
        y.push_back(
            CZelDwg::GetUprightPoint(start, columns.starts.first(), columns.ends.first()).y);
    return {withoutRepeats(x), withoutRepeats(y)};
}

void addCells(TableModel& model, const Coordinates& coordinates) {
    model.rowLines = static_cast<int>(coordinates.rows.size());
    model.columnLines = static_cast<int>(coordinates.columns.size());
    setSizes(model.columnWidths, coordinates.columns, 1.0);
    setSizes(model.rowHeights, coordinates.rows, -1.0);

    const GridCell empty;
    const INT_PTR cells = INT_PTR{model.rowLines - 1} * (model.columnLines - 1);
    model.texts.SetSize(model.texts.GetSize() + cells);
    addToEnd(model.horizontalModes, cells, empty.horizontal);
    addToEnd(model.verticalModes, cells, empty.vertical);
    addToEnd(model.colors, cells, empty.color);
    model.textStyles.setLogicalLength(model.textStyles.length() + static_cast<int>(cells));
    addToEnd(model.textHeights, cells, empty.height);
    addToEnd(model.widthFactors, cells, empty.widthFactor);
}

void fillCells(TableModel& model, const Coordinates& coordinates, const Crossings& crossings,
               const TextReader& readTexts) {
    CellWriter writer(model, coordinates, readTexts);
    // The last line of either direction begins no cell.
    for (int row = 0; row < crossings.rowCount() - 1; ++row) {
        for (const int column : crossings.columnsAt(row)) {
            if (column >= crossings.columnCount() - 1) break;
            if (const auto cell = crossings.cellAt(row, column)) writer.write(*cell);
        }
    }
}

} // namespace table
