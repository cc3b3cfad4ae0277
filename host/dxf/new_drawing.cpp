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
constexpr int kMarker = 100;
constexpr int kVariableName = 9;

/// Groups that make up a record rather than belong to one kind of entity: its identity, its layer
/// and how it looks, elevation, and that parts follow.
bool isOfAllEntities(int code) {
    constexpr std::array kCodes = {5,  6,  8,       38,  48,  60,          62,
                                   66, 67, kMarker, 102, 330, kCommentCode};
    return std::find(kCodes.begin(), kCodes.end(), code) != kCodes.end();
}

/// The subclass that holds the groups of an entity that the host does not model; empty when that is
/// not known.
std::string_view markerOf(std::string_view dxfName) {
    static constexpr std::pair<std::string_view, std::string_view> kMarkers[] = {
        {"SHAPE", "AcDbShape"},
        {"TOLERANCE", "AcDbFcf"},
        {"REGION", "AcDbModelerGeometry"},
        {"BODY", "AcDbModelerGeometry"},
        {"3DSOLID", "AcDbModelerGeometry"},
        {"OLEFRAME", "AcDbOleFrame"},
        {"OLE2FRAME", "AcDbOle2Frame"},
        {"ACAD_PROXY_ENTITY", "AcDbProxyEntity"},
    };
    for (const auto& [name, marker] : kMarkers) {
        if (name == dxfName) return marker;
    }
    return {};
}

std::span<const DxfTag> groupsBeforeXdata(std::span<const DxfTag> tags) {
    const auto xdata = std::find_if(tags.begin(), tags.end(),
                                    [](const DxfTag& tag) { return tag.code >= kFirstXdataCode; });
    return tags.first(static_cast<std::size_t>(xdata - tags.begin()));
}

/// True for the marker of a subclass other than that of all entities.
bool beginsOwnPart(const DxfTag& tag) { return tag.code == kMarker && tag.text() != "AcDbEntity"; }

bool models(const DxfOutput& written, int code) {
    return std::any_of(written.parts().begin(), written.parts().end(), [&](const DxfOutPart& part) {
        return part.whole ||
               std::find(part.codes.begin(), part.codes.end(), code) != part.codes.end();
    });
}

/// Pieces of sections that are read bear the record's name; classes are written anew.
bool isUnknownSection(const DxfPiece& piece) {
    return piece.kind == DxfPiece::Kind::kSection && piece.name != "SECTION" &&
           piece.name != "CLASSES";
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
        writer_.setPutMore([this](const AcDbObject& object, const DxfOutput& written) {
            putUnmodelled(object, written);
        });
}

void NewDrawing::putUnmodelled(const AcDbObject& object, const DxfOutput& written) {
    RecordGroups file(source_->input->bytes());
    if (AcDbEntity::cast(&object) == nullptr || !file.read(Residence::source(object))) return;
    const auto tags = groupsBeforeXdata(file.record().tags);
    if (OpaqueEntity::cast(&object) != nullptr) {
        // Files that call themselves R12 may be newer ones in disguise.
        const auto marked = std::find_if(tags.begin(), tags.end(), beginsOwnPart);
        if (marked != tags.end()) {
            std::for_each(marked, tags.end(), [this](const DxfTag& tag) { putGroup(tag); });
            return;
        }
        const std::string_view marker = markerOf(dxfName(object));
        if (!marker.empty()) groups_.name(kMarker, marker);
    }
    for (const DxfTag& tag : tags) {
        if (!isOfAllEntities(tag.code) && !models(written, tag.code)) putGroup(tag);
    }
}

void NewDrawing::putGroup(const DxfTag& tag) {
    if (tag.kind == DxfTag::Kind::kText)
        groups_.text(tag.code, source_->decoder.decode({tag.bytes, tag.length}));
    else if (tag.kind == DxfTag::Kind::kBinary)
        groups_.chunk(tag.code, {tag.bytes, tag.length});
    else if (tag.kind == DxfTag::Kind::kReal)
        groups_.real(tag.code, tag.real());
    else
        groups_.integer(tag.code, tag.integer());
}

void NewDrawing::putUnknownSections() {
    if (source_ == nullptr) return;
    DxfReadReport report; // What is wrong was told when the file was read.
    const auto scanner = RecordScanner::make(source_->input->bytes(), report);
    for (const DxfPiece& piece : source_->pieces) {
        if (!isUnknownSection(piece)) continue;
        scanner->seek({piece.span.offset, 1});
        ScannedRecord record;
        while (scanner->next(record) && record.begin < piece.span.offset + piece.span.length) {
            groups_.name(0, record.name);
            for (const DxfTag& tag : record.tags)
                putGroup(tag);
        }
        endSection();
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
    putUnknownSections();
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
