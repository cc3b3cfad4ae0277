// Writing a workbook through automation against calling the library that writes the file.
#include <unistd.h>

#include <filesystem>
#include <string>

#include <xlsxwriter.h>

#include "against.h"
#include "headless/session.h"
#include "table/excel_op.h"

namespace {

constexpr int kRows = 5'000;
constexpr int kColumns = 20;
constexpr int kStyles = 5; // of formats, as a table has

/// A file's name that is free, and no file at the end.
class File {
public:
    ~File() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    std::string native() const { return path_.string(); }
    CString platform() const { return path_.wstring().c_str(); }

private:
    std::filesystem::path path_ = std::filesystem::temp_directory_path() /
                                  ("orn-bench-" + std::to_string(getpid()) + ".xlsx");
};

constexpr long kCenter = -4108;
constexpr long kContinuous = 1;
constexpr long kThin = 2;

void writeByAutomation(const File& file) {
    CExcelOP excel;
    if (excel.Create(1, 0) == 0) return;
    for (int row = 1; row <= kRows; ++row) {
        for (int column = 1; column <= kColumns; ++column) {
            const COleVariant value =
                column % 2 == 0 ? COleVariant(row * 1.5) : COleVariant(L"叠合板 60");
            excel.SetCellValueRHCWColorAlognmentBorders(row, column, value, 20.0, 12.0, kCenter,
                                                        kCenter, 0, column % kStyles * 40,
                                                        kContinuous, kThin, RGB(0, 0, 0));
        }
    }
    excel.SaveWorkbookAs(file.platform());
    excel.Close();
}

lxw_format* boardFormat(lxw_workbook* book, int style) {
    lxw_format* format = workbook_add_format(book);
    format_set_align(format, LXW_ALIGN_CENTER);
    format_set_align(format, LXW_ALIGN_VERTICAL_CENTER);
    format_set_border(format, LXW_BORDER_THIN);
    format_set_font_color(format, static_cast<lxw_color_t>(style * 40) << 16 | 1);
    return format;
}

void writeDirectly(const File& file) {
    lxw_workbook* book = workbook_new(file.native().c_str());
    lxw_worksheet* sheet = workbook_add_worksheet(book, nullptr);
    lxw_format* formats[kStyles];
    for (int i = 0; i < kStyles; ++i)
        formats[i] = boardFormat(book, i);
    worksheet_set_column(sheet, 0, kColumns - 1, 12.0, nullptr);
    for (lxw_row_t row = 0; row < kRows; ++row) {
        worksheet_set_row(sheet, row, 20.0, nullptr);
        for (lxw_col_t column = 0; column < kColumns; ++column) {
            lxw_format* format = formats[(column + 1) % kStyles];
            if (column % 2 == 1) {
                worksheet_write_number(sheet, row, column, (row + 1) * 1.5, format);
            } else {
                worksheet_write_string(sheet, row, column, "叠合板 60", format);
            }
        }
    }
    workbook_close(book);
}

void formattedCells(benchmark::State& state) {
    const headless::Session session;
    const File file;
    bench::against(
        state, [&] { writeByAutomation(file); }, [&] { writeDirectly(file); }, kRows * kColumns);
    if (!session.leftovers().empty()) state.SkipWithError("something was not released");
}
BENCHMARK(formattedCells)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

BENCHMARK_MAIN();
