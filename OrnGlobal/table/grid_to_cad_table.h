// A table that someone drew with lines and texts, read into a grid.
//
//     CGridToCadTable table;
//     if (table.AnalyseTable(selected) == 1) {
//         table.FillGrid();
//         ... table.GetCell(1, 1).text ...
//     }
#pragma once

#include <functional>
#include <vector>

#include <afxdisp.h>
#include <afxtempl.h>
#include <afxwin.h>
#include <dbidar.h>
#include <gept3dar.h>

#include "OrnCore/lj_export_param.h"
#include "OrnMfc/draw_grid.h"
#include "table/table_param.h"

namespace table {
struct CellText;
struct EndLists;
} // namespace table

/// The table that an analysis found.
///
/// Cells are numbered by rows from the top left without the header; the lists of their attributes
/// are parallel, and so are those of the merged ranges.
struct TableModel {
    static constexpr double kUnitsPerSize = 40.0; // drawing units in one unit of width or height

    int rowLines = 0;                    // rows + 1
    int columnLines = 0;                 // columns + 1
    CArray<double, double> columnWidths; // of the header column first
    CArray<double, double> rowHeights;   // of the header row first

    CArray<int, int> mergeColumns; // the first column, from 1
    CArray<int, int> mergeRows;    // the first row, from 1
    CArray<int, int> mergeMoreColumns;
    CArray<int, int> mergeMoreRows;

    CStringArray texts;
    CArray<int, int> horizontalModes; // AcDb::TextHorzMode
    CArray<int, int> verticalModes;   // AcDb::TextVertMode
    CArray<int, int> colors;          // colour indices
    AcDbObjectIdArray textStyles;
    CArray<double, double> textHeights;
    CArray<double, double> widthFactors;

    int cellsFound = 0; // closed cells, a merged range counting once
};

class AFX_EXT_CLASS CGridToCadTable : public CDrawGrid {
public:
    CGridToCadTable();

    void SetTableParam(const TableParam& param) { param_ = param; }
    const TableParam& GetTableParam() const { return param_; }
    /// Each 100 unless set.
    void SetScale(double horizontal, double vertical);
    double GetHorizontalScale() const { return horizontalScale_; }
    double GetVerticalScale() const { return verticalScale_; }

    /// Reads the table that entities of any kind draw.
    ///
    /// @param ids  lines, polylines and single-line texts count; empty afterwards. Polylines leave
    /// a
    ///             straight line for each of their pieces in the drawing.
    /// @return     1; 0 when there is no table.
    int AnalyseTable(AcArray<AcDbObjectId>& ids);
    /// The same for lines that have no slanted and no repeated ones among them, and for texts of
    /// any kind.
    /// @param starts, ends  of the lines.
    int AnalyseLines(const AcGePoint3dArray& starts, const AcGePoint3dArray& ends,
                     const std::vector<table::CellText>& texts);

    /// Explodes polylines into lines of the drawing, leaves out repeated lines and those that are
    /// not parallel to an axis, and collects the others' ends.
    ///
    /// The last entity of the list is not exploded.
    /// @param ids           empty afterwards.
    /// @param starts, ends  the lines' ends are appended.
    /// @return              everything that is no line, in the list's order.
    AcArray<AcDbObjectId> RemoveBiasLineGetTxt(AcArray<AcDbObjectId>& ids, AcGePoint3dArray& starts,
                                               AcGePoint3dArray& ends);
    /// Joins lines that share an end, whatever their directions; the last line is never joined to
    /// another.
    /// @param a, b  the two ends of each line.
    void UniteLine(AcGePoint3dArray& a, AcGePoint3dArray& b);
    /// @param byX  not 0: x ascending; 0: y descending. Points level with each other keep their
    ///             order.
    void SortPoints(AcGePoint3dArray& points, int byX);
    /// Builds the model from rows sorted from the top and columns sorted from the left, starts and
    /// ends each by themselves.
    ///
    /// Cells and merged ranges are added to what is there, so that a second table with the same
    /// object takes ClearTableAttribute() first.
    /// @param texts  candidates, of which others than single-line texts are taken out.
    /// @return       1; 0 with a message when there are no rows or columns.
    int AnalyseCoordinate(AcGePoint3dArray& hStarts, AcGePoint3dArray& hEnds,
                          AcGePoint3dArray& vStarts, AcGePoint3dArray& vEnds,
                          AcArray<AcDbObjectId>& texts);

    /// Takes out values within 1e-6 of an earlier one.
    void RemoveRepeat(CArray<double, double>& values);
    /// The first value no farther from `value` than 1e-5 of the list's span; -1 for none.
    int DoubleAryFind(CArray<double, double>& values, double value);
    /// What stands in a closed outline, joined as it is.
    /// @param texts  others than single-line texts are taken out.
    /// @param index  the last text's place in the list; -1 for none.
    CString GetText(AcArray<AcDbObjectId>& texts, AcGePoint3dArray& polygon, int& index);

    /// Empties the model.
    void ClearTableAttribute();
    const TableModel& GetModel() const { return model_; }

    /// Makes the grid what the model says.
    void FillGrid();

    /// kelmor::AutoWrap, for callers that know it by this name.
    static long AutoWrap(int flags, VARIANT* result, IDispatch* object, CString name, int count,
                         ...);

protected:
    // For what fills, exports and draws the table again; reading it does not look at them.
    CLJExportParam exportParam_;
    double outputFactor_ = 1.0;
    double outputShare_ = 0.3;
    int outputMode_ = 0;
    int outputSetting_ = 1; // beside the settings of TableParam, which do not replace it

private:
    /// The model of sorted lines; 1, or 0 with a message.
    int analyse(const table::EndLists& rows, const table::EndLists& columns,
                const std::function<std::vector<table::CellText>()>& readTexts);

    TableModel model_;
    TableParam param_;
    double horizontalScale_ = 100.0;
    double verticalScale_ = 100.0;
};
