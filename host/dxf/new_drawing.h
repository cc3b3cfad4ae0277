// Writes a whole drawing anew: one that was never in a file, or that needs a newer version than the
// file it was read from.
#pragma once

#include <string_view>
#include <unordered_set>
#include <vector>

#include "dxf/drawing_changes.h"
#include "dxf/drawing_edits.h"
#include "dxf/drawing_form.h"
#include "dxf/part_updates.h"
#include "dxf/record_writer.h"
#include "dxf/writer.h"

class AcDbSymbolTable;
class AcDbSymbolTableRecord;

namespace headless {

class NewDrawing : private RecordSurroundings {
public:
    /// @param source  of what is only in the file, not in the database; null for a new drawing.
    NewDrawing(AcDbDatabase& db, const DrawingForm& form, const DxfSource* source,
               DxfWriteResult& result);

    void write(const DrawingEdits::Sink& sink);

private:
    bool isInFile(AcDbObjectId id) const override { return !changes_.isGone(id); }
    bool isLost(std::uint64_t /*handle*/) const override { return false; }
    bool anyLost() const override { return false; }
    void mentioned(AcDbObjectId /*id*/) override {}

    /// Puts what an entity has in the file of R12 beyond what its class wrote.
    void putUnmodelled(const AcDbObject& object, const DxfOutput& written);
    void putGroup(const DxfTag& tag);
    /// Sections that mean nothing to us, as they were.
    void putUnknownSections();
    void beginSection(std::string_view name);
    void endSection();
    void writeHeader();
    void writeClasses();
    void writeTables();
    void writeTable(const AcDbSymbolTable& table);
    void writeBlocks();
    void writeEntities();
    void writeEntitiesOf(const AcDbBlockTableRecord& block);
    void writeObjects();
    std::vector<const AcDbSymbolTableRecord*> recordsOf(const AcDbSymbolTable& table) const;

    AcDbDatabase& db_;
    DrawingForm form_;
    const DxfSource* source_;
    DxfWriteResult& result_;
    DrawingChanges changes_;
    DrawingEdits edits_;
    RecordWriter writer_;
    GroupWriter& groups_;
    PartUpdates parts_;
};

} // namespace headless
