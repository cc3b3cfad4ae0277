// What a database keeps of the file it was read from.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "db/database.h"
#include "db/record_archive.h"
#include "dxf/input.h"
#include "dxf/text_decoder.h"

namespace headless {

/// A stretch of the file that no object of the database stands for.
struct DxfPiece {
    enum class Kind : std::uint8_t {
        kSection,    // a section's head with its own groups
        kSectionEnd, // ENDSEC
        kTable,      // a table's head
        kTableEnd,   // ENDTAB
        kBlock,      // the beginning of a block
        kBlockEnd,   // ENDBLK
        kUnread,     // a damaged record, or one of a section that means nothing to us
        kLoose       // groups before the first record: comments, stray header variables
    };
    Kind kind;
    std::string_view name; // of the section, table or record, as in the file
    SourceSpan span;
};

/// The file with all that is needed to write unchanged parts again as they were. Pieces and the
/// objects' own spans together cover every byte up to the mark at the file's end.
struct DxfSource : RecordArchive {
    void read(AcDbDatabase& db, SourceSpan span, const Visit& visit) const override;

    std::shared_ptr<const DxfInput> input;
    bool binary = false;
    std::string version;  // "AC1015", empty when the file states none
    std::string codePage; // as the file names it
    TextDecoder decoder;
    std::vector<DxfPiece> pieces; // in file order
    std::uint64_t end = 0;    // of what was read: the mark at the file's end, or the file's size
    DrawingSettings settings; // of the drawing, as they were read
};

/// The file that the drawing was read from by readDxf; null when there is none.
std::shared_ptr<const DxfSource> dxfSource(const AcDbDatabase& db);

} // namespace headless
