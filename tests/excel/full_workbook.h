// A workbook with one of everything that files carry.
#pragma once

#include "excel/workbook.h"
#include "support/png.h"

namespace excel_test {

using namespace headless::excel;

inline FormatId formatOf(Workbook& book, void (*change)(CellFormat&)) {
    return book.formats.changed(kDefaultFormat, change);
}

inline std::unique_ptr<Workbook> fullWorkbook() {
    auto book = newWorkbook(3);
    book->properties.title = "楼板";
    book->sheets[1]->name = "Board list";
    book->sheets[2]->visibility = Visibility::kVeryHidden;
    book->activeSheet = 1;
    book->properties.company = "Boards & Co";
    book->names.push_back({"Total", "Sheet1!$B$2:$B$9", nullptr, true});
    book->names.push_back({"Local", "'Board list'!$A$1", book->sheets[1]});
    CellStyle good{"Good one", {}, {{"iLevel", "1"}}, {{"applyFont", "1"}}};
    good.format.font.bold = true;
    book->styles.push_back(good);
    Sheet& sheet = *book->sheets[0];
    sheet.at(1, 1).value = std::string("板 <1> & \"2\"\nsecond line ");
    sheet.at(2, 1).value = 12.5;
    sheet.at(2, 2).value = true;
    sheet.at(3, 1).formula = "A2*2";
    sheet.at(3, 1).value = 25.0;
    sheet.at(3, 2).formula = "UPPER(\"ab\")";
    sheet.at(3, 2).value = std::string("AB");
    sheet.at(4, 1).value = CellError{"#N/A"};
    sheet.at(5, 1).value = 45292.5;
    sheet.at(5, 1).format =
        formatOf(*book, [](CellFormat& f) { f.numberFormat = "yyyy-mm-dd hh:mm:ss"; });
    sheet.at(6, 1).value = std::string("styled");
    sheet.at(6, 1).format = formatOf(*book, [](CellFormat& f) {
        f.font = {"Arial", 14.0, true, true, true, Underline::kDouble, Script::kSuperscript, 0xFF};
        f.fill = {Pattern::kSolid, 0x00FFFF, {}};
        f.alignment = {Horizontal::kRight, Vertical::kTop, 2, 0, true, false};
        f.locked = false;
        f.style = 1;
    });
    sheet.at(7, 1).format = formatOf(*book, [](CellFormat& f) {
        f.borders = {{LineStyle::kThin, 0x112233},
                     {LineStyle::kMedium, {}},
                     {LineStyle::kDashed, {}},
                     {LineStyle::kDouble, 0},
                     {LineStyle::kHair, {}},
                     true,
                     false};
        f.fill = {Pattern::kDarkGrid, 0x0000FF, 0x00FF00};
        f.alignment.rotation = -45;
        f.alignment.shrink = true;
    });
    sheet.at(8, 1).format =
        formatOf(*book, [](CellFormat& f) { f.alignment.rotation = kStackedText; });
    sheet.at(10, 3).value = 1.0;
    sheet.at(12, 9).value = std::string("plan");
    sheet.merges = {{10, 3, 12, 5}};
    sheet.comments[{2, 1}] = {"measured", "Li", true};
    sheet.comments[{9, 9}] = {"beside", "", false};
    sheet.columns.change(2, 4, [](ColumnProperties& c) { c.width = widthOfPixels(145); });
    sheet.columns.change(6, 6, [](ColumnProperties& c) { c.hidden = true; });
    const FormatId percent = formatOf(*book, [](CellFormat& f) { f.numberFormat = "0%"; });
    sheet.columns.change(8, 8, [&](ColumnProperties& c) { c.format = percent; });
    sheet.rows.change(2, 3, [](RowProperties& r) { r.height = 30.0; });
    sheet.rows.change(4, 4, [](RowProperties& r) { r.hidden = true; });
    sheet.rows.change(5, 5, [&](RowProperties& r) { r.format = percent; });
    sheet.rows.change(20, 22, [](RowProperties& r) { r.outline = {2, false}; });
    sheet.rows.change(19, 19, [](RowProperties& r) { r.outline = {1, true}; });
    sheet.columns.change(10, 11, [](ColumnProperties& c) { c.outline.level = 1; });
    sheet.sumsBelow = false;
    sheet.links = {{{2, 1, 2, 1}, "https://boards.example/a%20b?c=d", "top", "more"},
                   {{11, 9, 11, 9}, "", "'Board list'!A1", ""},
                   {{12, 9, 12, 9}, "../plans/a.xlsx", "Sheet1!B2", ""}};
    sheet.inputRules = {{{2, 3, 9, 3},
                         InputKind::kList,
                         InputOperator::kBetween,
                         "\"S,M,L\"",
                         "",
                         true,
                         true,
                         true,
                         true,
                         InputRefusal::kWarning,
                         "Size",
                         "One of these",
                         "Refused",
                         "No such size"},
                        InputRule()};
    InputRule& rule = sheet.inputRules.back();
    rule.area = {2, 4, 9, 4};
    rule.kind = InputKind::kWhole;
    rule.comparison = InputOperator::kNotBetween;
    rule.first = "A2";
    rule.second = "9";
    sheet.protection = Protection{{false, true, true, false, true}, "83AF"};
    sheet.quiet[0] = {{1, 1, 9, 2}, {12, 1, 12, 1}};
    sheet.page.rowBreaks = {20, 40};
    sheet.page.columnBreaks = {5};
    sheet.tabColor = 0x0000FF;
    sheet.view = {2, 1, 150, false};
    sheet.autoFilter = Area{1, 1, 9, 3};
    sheet.page.landscape = true;
    sheet.page.paper = 9;
    sheet.page.leftMargin = 0.5;
    sheet.page.header = "&CBoards";
    sheet.page.printArea = Area{1, 1, 20, 5};
    sheet.page.titleRows = Area{1, 1, 2, kColumns};
    sheet.page.titleColumns = Area{1, 1, kRows, 1};
    sheet.page.fitToPages = true;
    sheet.page.fitTall = 0;
    sheet.page.centerHorizontally = true;
    sheet.pictures.push_back(
        {1, "logo", test_support::onePixelPng(), 14, 2, 3.0, 1.5, 90.0, 45.0, true});
    return book;
}

} // namespace excel_test
