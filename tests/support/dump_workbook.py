"""dump_workbook.py FILE: what another reader finds in a workbook, one fact a line.

    Sheet1!B2 value 12.5
    Sheet1!B2 font Arial 14.0 bold color 000000FF
"""

import sys
import zipfile

try:
    import openpyxl
except ImportError:
    sys.exit(77)


def color(value):
    return "none" if value is None else f"{value.rgb}" if value.type == "rgb" else f"{value.type}"


def cell_facts(cell):
    yield "value", repr(cell.value)
    yield "format", cell.number_format
    font = cell.font
    flags = [name for name, on in (("bold", font.b), ("italic", font.i), ("strike", font.strike)) if on]
    yield "font", " ".join([font.name, str(font.sz), *flags, str(font.u), str(font.vertAlign), color(font.color)])
    fill = cell.fill
    yield "fill", f"{fill.patternType} {color(fill.fgColor)}"
    for side in ("left", "right", "top", "bottom", "diagonal"):
        line = getattr(cell.border, side)
        if line is not None and line.style:
            yield side, f"{line.style} {color(line.color)}"
    alignment = cell.alignment
    yield "align", (f"{alignment.horizontal} {alignment.vertical} {int(alignment.indent)} "
                    f"{alignment.textRotation} {bool(alignment.wrapText)} {bool(alignment.shrinkToFit)}")
    if cell.comment:
        yield "comment", f"{cell.comment.author}: {cell.comment.text}"


def sheet_facts(sheet):
    yield "state", sheet.sheet_state
    yield "freeze", sheet.freeze_panes
    yield "filter", sheet.auto_filter.ref
    yield "merged", " ".join(sorted(str(area) for area in sheet.merged_cells.ranges))
    yield "page", f"{sheet.page_setup.orientation} {sheet.page_setup.paperSize} {sheet.page_margins.left}"
    yield "print", f"{sheet.print_area} {sheet.print_title_rows}"
    yield "header", sheet.oddHeader.center.text
    for name, width in sorted((name, dimension.width) for name, dimension in sheet.column_dimensions.items()):
        yield f"column {name}", f"{width:.4f}"
    for number, height in sorted((number, dimension.height) for number, dimension in sheet.row_dimensions.items()):
        if height is not None:
            yield f"row {number}", str(height)


def main(path):
    book = openpyxl.load_workbook(path)
    results = openpyxl.load_workbook(path, data_only=True)
    print("sheets", " ".join(book.sheetnames), "active", book.active.title)
    print("title", book.properties.title)
    print("calculated when opened", bool(book.calculation.fullCalcOnLoad))
    for name in book.defined_names.definedName:
        print("name", name.name, name.value)
    for part in zipfile.ZipFile(path).namelist():
        print("part", part)
    for sheet in book:
        for what, fact in sheet_facts(sheet):
            print(sheet.title, what, fact)
        for row in sheet.iter_rows():
            for cell in row:
                if cell.has_style or cell.value is not None or getattr(cell, "comment", None):
                    for what, fact in cell_facts(cell):
                        print(f"{sheet.title}!{cell.coordinate}", what, fact)
                if cell.data_type == "f":
                    print(f"{sheet.title}!{cell.coordinate}", "result",
                          repr(results[sheet.title][cell.coordinate].value))


main(sys.argv[1])
