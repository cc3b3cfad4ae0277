// Brings the file of a drawing up to date: what changed is written anew in its place, the rest
// stays as it is.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "dxf/drawing_changes.h"
#include "dxf/drawing_edits.h"
#include "dxf/drawing_form.h"
#include "dxf/file_map.h"
#include "dxf/header_update.h"
#include "dxf/part_updates.h"
#include "dxf/record_writer.h"
#include "dxf/section_edits.h"
#include "dxf/writer.h"

class AcDbSymbolTable;
class AcDbSymbolTableRecord;

namespace headless {

class SourceUpdate : private RecordSurroundings {
public:
    SourceUpdate(AcDbDatabase& db, const DxfSource& source, DxfWriteResult& result);

    /// What the drawing holds that its version has no word for; empty when there is nothing.
    std::string needsNewerVersion() const;
    /// Finds out what is to be written.
    void prepare();
    void write(const DrawingEdits::Sink& sink);

private:
    using Text = DrawingEdits::Text;

    /// A block that the file does not define yet.
    struct NewBlock {
        const AcDbBlockTableRecord* block;
        std::vector<Text> entities;
    };

    bool isInFile(AcDbObjectId id) const override;
    bool isLost(std::uint64_t handle) const override;
    bool anyLost() const override { return changes_.anyGone(); }
    void mentioned(AcDbObjectId id) override;

    void removeRecords();
    void admitAdded();
    bool hasPlaceFor(const AcDbObject& object) const;
    bool hasPlaceFor(const AcDbSymbolTableRecord& record) const;
    bool isNewBlock(const AcDbBlockTableRecord& block) const;

    void moveSheets();
    void rewriteWhatNamesThem();
    void rewriteChanged();
    void rewrite(const AcDbObject& object);
    void rewriteEntity(const AcDbEntity& entity);
    void rewriteRecord(const AcDbObject& object);
    void rewriteBlockBegin(const AcDbBlockTableRecord& block);
    void replaceIfOther(SourceSpan span);
    void rewriteOwner(AcDbObjectId owner);

    void writeAdded();
    void writeImplied();
    void add(AcDbObject& object);
    void addRecord(const AcDbSymbolTableRecord& record);
    void addEntitiesOf(const AcDbBlockTableRecord& block);
    void put(const AcDbBlockTableRecord& block, std::vector<Text>* list);
    std::vector<Text>* newEntitiesOf(const AcDbBlockTableRecord& block);
    std::uint64_t endOf(const AcDbBlockTableRecord& block) const;
    NewBlock& newBlock(const AcDbBlockTableRecord& block);
    Text textOf(const AcDbObject& object);

    void assemble();
    void assembleTables();
    void updateTable(const AcDbSymbolTable& table, const FileStretch& inFile);
    Text tableHead(const AcDbSymbolTable& table, std::size_t records);
    void assembleBlocks();
    void assembleObjects();
    void assembleClasses();

    void updateSettings();
    void updateHandleSeed();
    std::uint64_t newHandle();

    AcDbDatabase& db_;
    const DxfSource& source_;
    DxfWriteResult& result_;
    DrawingForm form_;
    DrawingChanges changes_;
    RecordGroups groups_; // of records that are looked at in between
    FileMap map_;
    DrawingEdits edits_;
    RecordWriter writer_;
    SectionEdits sections_;
    HeaderUpdate header_;
    PartUpdates parts_;

    std::unordered_set<AcDbStub*> written_; // added or implied objects that get a record
    std::vector<AcDbObject*> implied_;      // those of them that were not written yet
    std::unordered_set<AcDbStub*> renamed_;
    std::unordered_set<const AcDbBlockTableRecord*> moved_;  // sheets that stand elsewhere now
    std::unordered_set<const AcDbObject*> done_;             // of the file
    std::unordered_set<const AcDbBlockTableRecord*> filled_; // whose new entities are written
    bool handlesGiven_ = false;

    std::map<const AcRxClass*, std::vector<Text>> tableRecords_;
    std::vector<NewBlock> blocks_;
    std::vector<Text> entities_; // of the section of entities
    std::vector<Text> root_;     // the root dictionary, the first of all objects
    std::vector<Text> objects_;
    std::unordered_set<std::string_view> classes_; // of added objects
};

} // namespace headless
