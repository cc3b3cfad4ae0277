#include "dxf/source.h"

#include "db/database.h"
#include "dxf/record_filer.h"
#include "dxf/record_scanner.h"

namespace headless {
namespace {

/// All blocks were read long ago.
class NoBlocks : public BlockFinder {
    void announceBlocks() override {}
};

} // namespace

void DxfSource::read(AcDbDatabase& db, SourceSpan span, const Visit& visit) const {
    if (input == nullptr || span.length == 0) return;
    DxfReadReport report; // What is wrong with the record was told when it was read first.
    const auto scanner = RecordScanner::make(input->bytes(), report);
    scanner->seek({span.offset, 1});
    ScannedRecord record;
    if (!scanner->next(record)) return;
    NoBlocks blocks;
    RecordFiler filer(db, report, blocks);
    filer.setDecoder(decoder);
    visit(record.tags, filer);
}

std::shared_ptr<const DxfSource> dxfSource(const AcDbDatabase& db) {
    // Nobody but readDxf gives a database a source.
    return std::static_pointer_cast<const DxfSource>(db.sourceOwner());
}

} // namespace headless
