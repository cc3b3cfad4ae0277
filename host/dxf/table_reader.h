// Reads the symbol tables of a drawing.
#pragma once

#include "dxf/context.h"

class AcDbSymbolTableRecord;

namespace headless {

/// Tables may be spoilt or missing; each record says by itself which table it belongs to.
class TableReader {
public:
    explicit TableReader(ReadContext& context) : context_(context) {}

    /// Reads the records from where the scanner stands to the section's end, which it leaves
    /// unread. Records that others name come first, in whatever order the file has them.
    void readSection();

private:
    void readRecord(const ScannedRecord& record);
    void readTable(const RecordParts& parts);
    void readTableRecord(AcRxClass* recordClass, const RecordParts& parts);

    ReadContext& context_;
};

} // namespace headless
