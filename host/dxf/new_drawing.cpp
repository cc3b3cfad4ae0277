#include "dxf/new_drawing.h"

#include <algorithm>
#include <array>

#include "db/block_table.h"
#include "db/database.h"
#include "db/dictionary.h"
#include "db/drawing_roots.h"
#include "db/entity.h"
#include "db/opaque.h"
#include "db/residence.h"
#include "dxf/group_codes.h"
#include "dxf/header_settings.h"
#include "dxf/table_order.h"
#include "dxf/version_limits.h"

namespace headless {
namespace {

constexpr int kName = 2;
constexpr int kVariableName = 9;

bool isOfAllEntities(int code) {
    constexpr std::array kCodes = {5, 6, 8, 48, 60, 62, 67, kCommentCode};
    return std::find(kCodes.begin(), kCodes.end(), code) != kCodes.end();
}

/// The objects of the section of objects, the root dictionary first.
std::vector<const AcDbObject*> objectsOf(const AcDbDatabase& db, const DrawingChanges& changes) {
    std::vector<const AcDbObject*> objects;
    const auto take = [&](AcDbObjectId id) {
        const AcDbObject* const object = Residence::peek(id);
        const bool elsewhere = AcDbEntity::cast(object) != nullptr ||
                               AcDbSymbolTable::cast(object) != nullptr ||
                               AcDbSymbolTableRecord::cast(object) != nullptr;
        if (!elsewhere && !changes.isGone(id)) objects.push_back(object);
    };
    const AcDbObjectId root = db.namedObjectsDictionaryId();
    take(root);
    for (const AcDbObjectId id : Residence::residents(db)) {
        if (id != root) take(id);
    }
    return objects;
}

} // namespace

NewDrawing::NewDrawing(AcDbDatabase& db, const DrawingForm& form, const DxfSource* source,
                       DxfWriteResult& result)
    : db_(db), form_(form), source_(source), result_(result), changes_(db),
      writer_(db, nullptr, form_, *this, edits_.buffer()), groups_(writer_.groups()),
      parts_(changes_, edits_, writer_, [this] { return Residence::reserveHandle(db_); }) {
    if (source_ != nullptr)
        writer_.setPutMore([this](const AcDbObject& object) { putUnmodelled(object); });
}

void NewDrawing::putUnmodelled(const AcDbObject& object) {
    if (OpaqueEntity::cast(&object) == nullptr || dxfName(object) != "SHAPE") return;
    RecordGroups file(source_->input->bytes());
    if (!file.read(Residence::source(object))) return;
    groups_.name(100, "AcDbShape");
    for (const DxfTag& tag : file.record().tags) {
        if (tag.code >= kFirstXdataCode) break;
        if (isOfAllEntities(tag.code)) continue;
        if (tag.kind == DxfTag::Kind::kText)
            groups_.text(tag.code, source_->decoder.decode({tag.bytes, tag.length}));
        else if (tag.kind == DxfTag::Kind::kReal)
            groups_.real(tag.code, tag.real());
        else
            groups_.integer(tag.code, tag.integer());
    }
}

void NewDrawing::write(const DrawingEdits::Sink& sink) {
    result_.version = nameOf(form_.version);
    // The header names the next free handle, so it comes last and is passed on first.
    writeClasses();
    writeTables();
    writeBlocks();
    writeEntities();
    writeObjects();
    groups_.name(0, "EOF");
    const DrawingEdits::Text body = edits_.takeText();
    result_.added += parts_.added();
    writeHeader();
    const DrawingEdits::Text header = edits_.takeText();
    sink(edits_.bytes(header));
    sink(edits_.bytes(body));
}

void NewDrawing::beginSection(std::string_view name) {
    groups_.name(0, "SECTION");
    groups_.name(kName, name);
}

void NewDrawing::endSection() { groups_.name(0, "ENDSEC"); }

void NewDrawing::writeHeader() {
    beginSection("HEADER");
    DxfOutput variables(form_.version);
    const auto begin = [&](std::string_view name) { variables.name(kVariableName, name); };
    begin("$ACADVER");
    variables.name(1, nameOf(form_.version));
    begin("$DWGCODEPAGE");
    variables.text(3, form_.codePage);
    begin("$HANDSEED");
    variables.handleNumber(5, db_.handseed());
    putSettings(variables, db_, nullptr, [](AcDbObjectId) { return false; });
    for (const DxfOutTag& tag : variables.tags())
        groups_.tag(tag);
    endSection();
}

void NewDrawing::writeClasses() {
    std::unordered_set<std::string_view> names;
    for (const AcDbObjectId id : Residence::residents(db_)) {
        if (!changes_.isGone(id)) names.insert(dxfName(*Residence::peek(id)));
    }
    beginSection("CLASSES");
    std::vector<std::string_view> sorted(names.begin(), names.end());
    std::sort(sorted.begin(), sorted.end());
    for (const std::string_view name : sorted)
        writeClass(groups_, name);
    endSection();
}

std::vector<const AcDbSymbolTableRecord*>
NewDrawing::recordsOf(const AcDbSymbolTable& table) const {
    std::vector<const AcDbSymbolTableRecord*> records;
    for (const AcDbObjectId id : table.recordIds()) {
        const auto* const record = Residence::peek<AcDbSymbolTableRecord>(id);
        if (record != nullptr && !changes_.isGone(id)) records.push_back(record);
    }
    return records;
}

void NewDrawing::writeTables() {
    beginSection("TABLES");
    for (const AcRxClass* const kind : tablesInOrder())
        writeTable(*DrawingRoots::table(db_, kind));
    endSection();
}

void NewDrawing::writeTable(const AcDbSymbolTable& table) {
    const auto records = recordsOf(table);
    writeTableHead(groups_, table, records.size());
    for (const AcDbSymbolTableRecord* const record : records)
        writer_.write(*record);
    result_.added += records.size();
    groups_.name(0, "ENDTAB");
}

void NewDrawing::writeBlocks() {
    beginSection("BLOCKS");
    const auto& table = *Residence::peek<AcDbBlockTable>(db_.blockTableId());
    for (const AcDbSymbolTableRecord* const record : recordsOf(table)) {
        const auto& block = static_cast<const AcDbBlockTableRecord&>(*record);
        const AcDbObjectId id = block.objectId();
        writer_.writeBlockBegin(block, {{}, Residence::reserveHandle(db_)});
        if (id != db_.modelSpaceId() && id != db_.paperSpaceId()) writeEntitiesOf(block);
        writer_.writeBlockEnd(block, {{}, Residence::reserveHandle(db_)});
    }
    endSection();
}

void NewDrawing::writeEntities() {
    beginSection("ENTITIES");
    for (const AcDbObjectId space : {db_.modelSpaceId(), db_.paperSpaceId()}) {
        if (const auto* const block = Residence::peek<AcDbBlockTableRecord>(space))
            writeEntitiesOf(*block);
    }
    endSection();
}

void NewDrawing::writeEntitiesOf(const AcDbBlockTableRecord& block) {
    for (const AcDbObjectId id : block.entityIds()) {
        auto* const entity = Residence::peek<AcDbEntity>(id);
        if (entity == nullptr || changes_.isGone(id)) continue;
        writer_.write(*entity);
        parts_.writeAll(*entity);
        ++result_.added;
    }
}

void NewDrawing::writeObjects() {
    beginSection("OBJECTS");
    for (const AcDbObject* const object : objectsOf(db_, changes_)) {
        writer_.write(*object);
        ++result_.added;
    }
    endSection();
}

} // namespace headless
