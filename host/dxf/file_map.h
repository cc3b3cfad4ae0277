// Where the sections and tables of a file stand, so that more can be put into them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/record_groups.h"
#include "dxf/source.h"

namespace headless {

/// Offsets in the file.
struct FileStretch {
    std::string name;        // of the section or table
    SourceSpan head;         // SECTION or TABLE with what belongs to it
    std::uint64_t begin = 0; // behind the head
    std::uint64_t end = 0;   // before ENDSEC or ENDTAB, or where that ought to stand
};

class FileMap {
public:
    FileMap(const DxfSource& source, RecordGroups& groups);

    /// The last of that name; null when the file has none.
    const FileStretch* section(std::string_view name) const;
    const FileStretch* table(std::string_view name) const;
    /// Where a section that the file lacks belongs, by the usual order of sections.
    std::uint64_t placeFor(std::string_view section) const;

private:
    void addSection(const DxfPiece& piece, RecordGroups& groups);
    void addTable(const DxfPiece& piece, RecordGroups& groups);
    void closeSection(std::uint64_t end);
    void closeTable(std::uint64_t end);

    std::vector<FileStretch> sections_;
    std::vector<FileStretch> tables_;
    std::uint64_t end_ = 0;
    bool sectionOpen_ = false;
    bool tableOpen_ = false;
};

} // namespace headless
