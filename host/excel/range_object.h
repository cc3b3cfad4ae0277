// Ranges of cells: what they hold, look like and lead to. The members are written down in
// range_object.cpp, by kind in the files beside it.
#pragma once

#include "excel/area_object.h"

namespace headless::excel {

class Range final : public AreaObject {
public:
    Range(const SheetPlace& place, const Area& area, RangeUnit unit)
        : AreaObject(place, area), unit_(unit) {}

    const SheetPlace& place() const { return place_; }
    const Area& area() const { return area_; }

    // --- Contents ---

    OwnedVariant value2() const;
    OwnedVariant value() const;
    void setValue2(const VARIANT& value);
    void setValue(const CallArguments&, const VARIANT& value);
    OwnedVariant formula() const;
    void setFormula(const VARIANT& value);
    OwnedVariant hasFormula() const;
    OwnedVariant text() const;
    void clearContents();
    void clearFormats();
    void clear();
    void clearComments();
    OwnedVariant find(const CallArguments& arguments) const;

    // --- Comments ---

    IDispatch* addComment(const CallArguments& arguments);
    IDispatch* comment() const;

    // --- Format ---

    OwnedVariant numberFormat() const;
    void setNumberFormat(const VARIANT& value);
    OwnedVariant horizontal() const;
    void setHorizontal(const VARIANT& value);
    OwnedVariant vertical() const;
    void setVertical(const VARIANT& value);
    OwnedVariant indent() const;
    void setIndent(const VARIANT& value);
    OwnedVariant wrap() const;
    void setWrap(const VARIANT& value);
    OwnedVariant shrink() const;
    void setShrink(const VARIANT& value);
    OwnedVariant orientation() const;
    void setOrientation(const VARIANT& value);
    OwnedVariant locked() const;
    void setLocked(const VARIANT& value);
    IDispatch* font() const;
    IDispatch* interior() const;
    IDispatch* borders(const CallArguments& arguments) const;
    /// @param arguments  line style, weight, palette index, colour.
    void borderAround(const CallArguments& arguments);

    // --- Rows, columns, places ---

    OwnedVariant rowHeight() const;
    void setRowHeight(const VARIANT& value);
    OwnedVariant columnWidth() const;
    void setColumnWidth(const VARIANT& value);
    void autoFit();
    OwnedVariant hidden() const;
    void setHidden(const VARIANT& value);
    double left() const;
    double top() const;
    double width() const;
    double height() const;
    LONG row() const;
    LONG column() const;
    double count() const;
    std::wstring address(const CallArguments& arguments) const;

    // --- Other ranges ---

    IDispatch* item(const CallArguments& arguments) const;
    IDispatch* cells(const CallArguments& arguments) const;
    IDispatch* rows(const CallArguments& arguments) const;
    IDispatch* columns(const CallArguments& arguments) const;
    IDispatch* range(const CallArguments& arguments) const;
    IDispatch* offset(const CallArguments& arguments) const;
    IDispatch* resize(const CallArguments& arguments) const;
    IDispatch* entireRow() const;
    IDispatch* entireColumn() const;
    /// The end of a block of filled cells, as Ctrl with an arrow finds it.
    IDispatch* end(const CallArguments& arguments) const;
    /// The block of filled cells around, up to empty rows and columns.
    IDispatch* currentRegion() const;
    IDispatch* mergeArea() const;
    IDispatch* worksheet() const;

    // --- Changes of the sheet ---

    OwnedVariant mergeCells() const;
    void setMergeCells(const VARIANT& value);
    void merge(const CallArguments& arguments);
    void unmerge();
    void insert(const CallArguments& arguments);
    void remove(const CallArguments& arguments);
    void copy(const CallArguments& arguments);
    void cut(const CallArguments& arguments);
    void pasteSpecial(const CallArguments& arguments);
    void autoFilter();
    void select();

protected:
    const MemberTable& members() const override;

private:
    /// The sheet, its columns as wide as they are to be.
    Sheet& fitted() const;
    /// Brings the results that are about to be read up to date.
    void calculate() const;
    OwnedVariant contents(bool typed) const;
    OwnedVariant formulaOf(int row, int column) const;
    IDispatch* checked(const Area& area) const;
    IDispatch* cellAt(LONG row, LONG column) const;
    IDispatch* rowAt(LONG row) const;
    IDispatch* columnAt(LONG column) const;

    RangeUnit unit_;
};

} // namespace headless::excel
