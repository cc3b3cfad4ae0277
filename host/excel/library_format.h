// Formats of cells for the library that writes workbook files.
#pragma once

#include <vector>

#include <xlsxwriter.h>

#include "excel/format_table.h"

namespace headless::excel {

/// The formats of one workbook, each made when it is used first.
class LibraryFormats {
public:
    LibraryFormats(lxw_workbook* target, const FormatTable& source);
    [[nodiscard]] lxw_format* at(FormatId id);
    /// A format that the file has though no cell uses it.
    /// @return  its number in the file.
    int addUnused(const CellFormat& format);

private:
    lxw_workbook* target_;
    const FormatTable& source_;
    std::vector<lxw_format*> formats_; ///< By id; null for one not used yet.
};

} // namespace headless::excel
