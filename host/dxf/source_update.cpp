#include "dxf/source_update.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "db/block_table.h"
#include "db/database.h"
#include "db/dictionary.h"
#include "db/drawing_roots.h"
#include "db/opaque.h"
#include "db/residence.h"
#include "dxf/fetch_ahead.h"
#include "dxf/header_settings.h"
#include "dxf/renamed_records.h"
#include "dxf/table_order.h"
#include "dxf/version_limits.h"

namespace headless {
namespace {

constexpr int kVariableName = 9;
constexpr int kHandle = 5;

bool isStubInFile(AcDbObjectId id) {
    const AcDbStub* const stub = id;
    return stub != nullptr && stub->inFile;
}

/// True when the text holds the name as a value of its own, not within another name.
bool holdsWord(std::string_view text, std::string_view name) {
    const auto ofName = [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
    };
    for (std::size_t at = 0; (at = text.find(name, at)) != std::string_view::npos; ++at) {
        const std::size_t end = at + name.size();
        if ((at == 0 || !ofName(text[at - 1])) && (end == text.size() || !ofName(text[end])))
            return true;
    }
    return false;
}

std::uint64_t behind(SourceSpan span) { return span.offset + span.length; }

} // namespace

SourceUpdate::SourceUpdate(AcDbDatabase& db, const DxfSource& source, DxfWriteResult& result)
    : db_(db), source_(source), result_(result), form_(formOf(source)), changes_(db),
      groups_(source.input->bytes()), map_(source, groups_),
      writer_(db, &source, form_, *this, edits_.buffer()),
      sections_(edits_, map_, writer_.groups()), header_(edits_, map_, groups_, sections_),
      parts_(changes_, edits_, writer_, [this] { return newHandle(); }) {
    form_.handles = form_.hasSubclasses() || statesHandles(db, groups_);
}

std::string SourceUpdate::needsNewerVersion() const {
    if (form_.version != DrawingVersion::kR12) return {};
    for (const AcDbObject* const object : changes_.added()) {
        if (!fitsR12(*object)) return std::string(dxfName(*object));
    }
    return {};
}

bool SourceUpdate::isInFile(AcDbObjectId id) const {
    if (!id.isResident() || changes_.isGone(id)) return false;
    return isStubInFile(id) || written_.contains(id);
}

bool SourceUpdate::isLost(std::uint64_t handle) const {
    const AcDbStub* const stub = Residence::find(db_, handle);
    if (stub == nullptr) return false;
    const AcDbObjectId id = Residence::find(db_, handle);
    return stub->permanentlyErased || (stub->object != nullptr && changes_.isGone(id));
}

void SourceUpdate::mentioned(AcDbObjectId id) {
    AcDbObject* const object = Residence::peek(id);
    if (object == nullptr || isInFile(id) || changes_.isGone(id) || !hasPlaceFor(*object)) return;
    written_.insert(id);
    implied_.push_back(object);
}

bool SourceUpdate::hasPlaceFor(const AcDbObject& object) const {
    if (const auto* const record = AcDbSymbolTableRecord::cast(&object))
        return hasPlaceFor(*record);
    if (AcDbSymbolTable::cast(&object) != nullptr) return false;
    return form_.hasSubclasses() || AcDbEntity::cast(&object) != nullptr;
}

bool SourceUpdate::hasPlaceFor(const AcDbSymbolTableRecord& record) const {
    const auto* const block = AcDbBlockTableRecord::cast(&record);
    if (block != nullptr && !form_.hasSubclasses()) return false; // BLOCK says it all.
    if (map_.table(record.isA()->dxfNameBytes()) != nullptr) return true;
    if (block != nullptr) return !block->isSpace() && !changes_.beginsInFile(*block);
    // Files of little more than entities leave much unsaid.
    return Residence::record(record) == Residence::Record::kNew ||
           (form_.hasSubclasses() && map_.section("TABLES") != nullptr);
}

bool SourceUpdate::isNewBlock(const AcDbBlockTableRecord& block) const {
    if (changes_.beginsInFile(block)) return false;
    return form_.hasSubclasses() ? written_.contains(block.objectId()) : !block.isSpace();
}

void SourceUpdate::prepare() {
    result_.version = source_.version;
    removeRecords();
    admitAdded();
    RenamedRecords renamed = findRenamed(changes_, source_, groups_);
    renamed_ = renamed.records;
    writer_.setRenamed(std::move(renamed.records), std::move(renamed.layers));
    moveSheets();
    parts_.updateAll();
    rewriteChanged();
    rewriteWhatNamesThem();
    updateSettings();
    writeAdded();
    writeImplied();
    assemble();
    result_.added += parts_.added();
    result_.changed += parts_.moved();
    updateHandleSeed();
}

void SourceUpdate::write(const DrawingEdits::Sink& sink) {
    edits_.write(source_.input->bytes(), sink);
}

void SourceUpdate::removeRecords() {
    for (const SourceSpan span : changes_.removed()) {
        edits_.remove(span.offset, behind(span));
        ++result_.removed;
    }
    for (const AcDbBlockTableRecord* const block : changes_.removedBlocks()) {
        const SourceSpan begin = block->beginSource();
        const SourceSpan end = block->endSource();
        edits_.remove(begin.offset, end.length == 0 ? endOf(*block) : behind(end));
        if (!form_.hasSubclasses()) ++result_.removed;
    }
}

void SourceUpdate::admitAdded() {
    for (const AcDbObject* const object : changes_.added()) {
        if (hasPlaceFor(*object)) written_.insert(object->objectId());
    }
}

/// The entities of the sheet that is shown, which its name tells, stand in the section of entities,
/// those of other sheets in their blocks.
void SourceUpdate::moveSheets() {
    if (!form_.hasSubclasses()) return;
    std::unordered_set<const AcDbObject*> apart;
    for (AcDbStub* const stub : renamed_) {
        const auto* const block = Residence::peek<AcDbBlockTableRecord>(AcDbObjectId(stub));
        if (block == nullptr || !block->isSpace()) continue;
        moved_.insert(block);
        std::vector<Text>* const list = newEntitiesOf(*block);
        for (const AcDbObjectId id : block->entityIds()) {
            auto* const entity = Residence::peek<AcDbEntity>(id);
            if (entity == nullptr || !isStubInFile(id) || changes_.isGone(id)) continue;
            parts_.moveAway(*entity, apart);
            put(*block, list);
            ++result_.changed;
        }
    }
    changes_.setApart(apart);
    done_.insert(apart.begin(), apart.end());
}

/// Files name table records by their names, so a new name concerns objects that did not change.
void SourceUpdate::rewriteWhatNamesThem() {
    if (renamed_.empty()) return;
    for (const AcDbObjectId id : Residence::residents(db_)) {
        const AcDbObject& object = *Residence::peek(id);
        if (Residence::record(object) != Residence::Record::kAsRead || changes_.isGone(id) ||
            done_.contains(&object) || parts_.isDone(&object))
            continue;
        if (writer_.namesRenamed(object)) rewrite(object);
    }
}

void SourceUpdate::rewriteChanged() {
    constexpr std::size_t kUsualRecord = 256;
    edits_.buffer().reserve(changes_.changed().size() * kUsualRecord);
    const std::vector<AcDbObject*>& changed = changes_.changed();
    for (std::size_t i = 0; i < changed.size(); ++i) {
        if (i + kFetchedAhead < changed.size()) fetch(changed[i + kFetchedAhead]);
        const AcDbObject* const object = changed[i];
        if (parts_.isDone(object)) continue;
        if (const auto* const entity = AcDbEntity::cast(object)) {
            rewriteEntity(*entity);
            continue;
        }
        if (AcDbSymbolTable::cast(object) == nullptr) rewrite(*object);
        const auto* const block = AcDbBlockTableRecord::cast(object);
        if (block != nullptr && changes_.beginsInFile(*block)) rewriteBlockBegin(*block);
    }
    for (const AcDbObject* const object : changes_.added()) {
        const auto* const block = AcDbBlockTableRecord::cast(object);
        if (block != nullptr && changes_.beginsInFile(*block)) rewriteBlockBegin(*block);
    }
    for (AcDbStub* const stub : changes_.attributed()) {
        const auto* const block = Residence::peek<AcDbBlockTableRecord>(AcDbObjectId(stub));
        const bool asRead = block != nullptr && changes_.beginsInFile(*block) &&
                            Residence::record(*block) == Residence::Record::kAsRead;
        if (asRead && !changes_.isGone(block->objectId())) rewriteBlockBegin(*block);
    }
}

void SourceUpdate::rewrite(const AcDbObject& object) {
    // Dictionaries are asked for by what they own, too.
    if (done_.insert(&object).second) rewriteRecord(object);
}

void SourceUpdate::rewriteEntity(const AcDbEntity& entity) {
    // Names of renamed records and objects that are gone may stand anywhere in the record.
    const bool looksOnly =
        !Residence::isReshaped(entity) && renamed_.empty() && !changes_.anyGone();
    SourceSpan span = Residence::source(entity);
    const std::uint32_t looks = looksOnly ? writer_.writeLooks(entity) : 0;
    if (looks != 0)
        span.length = looks;
    else
        writer_.write(entity);
    replaceIfOther(span);
}

void SourceUpdate::rewriteRecord(const AcDbObject& object) {
    writer_.write(object);
    replaceIfOther(Residence::source(object));
}

void SourceUpdate::rewriteBlockBegin(const AcDbBlockTableRecord& block) {
    const bool attributed = changes_.attributed().contains(block.objectId());
    writer_.writeBlockBegin(block, {block.beginSource(), 0}, attributed);
    replaceIfOther(block.beginSource());
}

void SourceUpdate::replaceIfOther(SourceSpan span) {
    if (edits_.replaceIfOther(source_.input->bytes(), span)) ++result_.changed;
}

/// A dictionary names what it owns; one that was only completed after reading does not know it yet.
void SourceUpdate::rewriteOwner(AcDbObjectId owner) {
    const auto* const dictionary = Residence::peek<AcDbDictionary>(owner);
    if (dictionary == nullptr) return;
    if (isStubInFile(owner))
        rewrite(*dictionary);
    else
        mentioned(owner);
}

void SourceUpdate::writeAdded() {
    for (AcDbObject* const object : changes_.added())
        add(*object);
}

void SourceUpdate::writeImplied() {
    while (!implied_.empty()) {
        AcDbObject* const object = implied_.back();
        implied_.pop_back();
        add(*object);
    }
}

SourceUpdate::Text SourceUpdate::textOf(const AcDbObject& object) {
    writer_.write(object);
    ++result_.added;
    return edits_.takeText();
}

void SourceUpdate::add(AcDbObject& object) {
    if (const auto* const record = AcDbSymbolTableRecord::cast(&object)) {
        addRecord(*record);
        return;
    }
    if (!written_.contains(object.objectId())) return;
    if (AcDbEntity::cast(&object) != nullptr) {
        // Vertices and attributes go with their entity.
        const auto* const block = Residence::peek<AcDbBlockTableRecord>(object.ownerId());
        if (block != nullptr) addEntitiesOf(*block);
        return;
    }
    rewriteOwner(object.ownerId());
    const bool isRoot = object.objectId() == db_.namedObjectsDictionaryId();
    (isRoot ? root_ : objects_).push_back(textOf(object));
    classes_.insert(dxfName(object));
}

void SourceUpdate::addRecord(const AcDbSymbolTableRecord& record) {
    if (const auto* const block = AcDbBlockTableRecord::cast(&record)) {
        if (isNewBlock(*block)) newBlock(*block);
    }
    if (!written_.contains(record.objectId())) return;
    tableRecords_[record.isA()].push_back(textOf(record));
}

SourceUpdate::NewBlock& SourceUpdate::newBlock(const AcDbBlockTableRecord& block) {
    const auto known = std::find_if(blocks_.begin(), blocks_.end(),
                                    [&](const NewBlock& b) { return b.block == &block; });
    if (known != blocks_.end()) return *known;
    if (!form_.hasSubclasses()) ++result_.added;
    return blocks_.emplace_back(NewBlock{&block, {}});
}

/// Offset of the block's end.
std::uint64_t SourceUpdate::endOf(const AcDbBlockTableRecord& block) const {
    if (block.endSource().length != 0) return block.endSource().offset;
    for (const DxfPiece& piece : source_.pieces) {
        const bool ends = piece.kind == DxfPiece::Kind::kBlock ||
                          piece.kind == DxfPiece::Kind::kSection ||
                          piece.kind == DxfPiece::Kind::kSectionEnd;
        if (ends && piece.span.offset > block.beginSource().offset) return piece.span.offset;
    }
    return source_.end;
}

/// The list that takes more entities of the block; null when they go right to the block's end.
std::vector<SourceUpdate::Text>* SourceUpdate::newEntitiesOf(const AcDbBlockTableRecord& block) {
    const AcDbObjectId id = block.objectId();
    if (id != db_.modelSpaceId() && id != db_.paperSpaceId())
        return isNewBlock(block) ? &newBlock(block).entities : nullptr;
    if (moved_.contains(&block)) return &entities_;
    for (const AcDbObjectId other : block.entityIds()) {
        if (!isStubInFile(other)) continue;
        const std::uint64_t offset = Residence::source(*Residence::peek(other)).offset;
        const bool inBlock = changes_.beginsInFile(block) && offset > block.beginSource().offset &&
                             offset < endOf(block);
        return inBlock ? nullptr : &entities_;
    }
    return &entities_;
}

void SourceUpdate::addEntitiesOf(const AcDbBlockTableRecord& block) {
    if (!filled_.insert(&block).second) return;
    std::vector<Text>* const list = newEntitiesOf(block);
    for (const AcDbObjectId id : block.entityIds()) {
        auto* const entity = Residence::peek<AcDbEntity>(id);
        if (entity == nullptr || !written_.contains(id)) continue;
        writer_.write(*entity);
        parts_.writeAll(*entity);
        classes_.insert(dxfName(*entity));
        ++result_.added;
        put(block, list);
    }
}

/// Puts an entity that was written into the list, or at the end of its block.
void SourceUpdate::put(const AcDbBlockTableRecord& block, std::vector<Text>* list) {
    const Text text = edits_.takeText();
    if (list != nullptr)
        list->push_back(text);
    else
        edits_.insert(endOf(block), text);
}

void SourceUpdate::assemble() {
    assembleTables();
    assembleBlocks();
    sections_.put("ENTITIES", entities_);
    assembleClasses();
    assembleObjects();
}

void SourceUpdate::assembleTables() {
    std::vector<Text> newTables;
    for (AcRxClass* const kind : tablesInOrder()) {
        const AcDbSymbolTable& table = *DrawingRoots::table(db_, kind);
        const std::vector<Text>& records = tableRecords_[kind];
        if (const FileStretch* const inFile = map_.table(kind->dxfNameBytes())) {
            for (const Text text : records)
                edits_.insert(inFile->end, text);
            updateTable(table, *inFile);
        } else if (!records.empty()) {
            newTables.push_back(tableHead(table, records.size()));
            newTables.insert(newTables.end(), records.begin(), records.end());
            newTables.push_back(sections_.lines({{0, "ENDTAB"}}));
        }
    }
    sections_.put("TABLES", newTables);
}

/// The head of a table tells how many records it has, if not always the truth.
void SourceUpdate::updateTable(const AcDbSymbolTable& table, const FileStretch& inFile) {
    constexpr int kCount = 70;
    auto difference = static_cast<std::int64_t>(tableRecords_[table.recordClass()].size());
    for (const AcDbObjectId id : table.recordIds())
        difference -= isStubInFile(id) && changes_.isGone(id) ? 1 : 0;
    const bool changed = Residence::record(table) == Residence::Record::kChanged;
    if (!changed && difference == 0) return;

    writer_.write(table);
    groups_.read(inFile.head);
    std::size_t at = 0;
    while (at < groups_.size() && groups_[at].code != kCount)
        ++at;
    if (difference != 0 && at < groups_.size()) {
        std::string& text = edits_.buffer();
        const std::string behind(groups_.bytes(at + 1, groups_.size()));
        text.resize(text.size() - behind.size() - groups_.bytes(at, at + 1).size());
        writer_.groups().integer(kCount,
                                 std::max<std::int64_t>(groups_[at].integer() + difference, 0));
        text += behind;
    }
    const std::size_t before = result_.changed;
    replaceIfOther(inFile.head);
    result_.changed = before; // It is the records that changed.
}

SourceUpdate::Text SourceUpdate::tableHead(const AcDbSymbolTable& table, std::size_t records) {
    writeTableHead(writer_.groups(), table, records);
    return edits_.takeText();
}

void SourceUpdate::assembleBlocks() {
    std::vector<Text> texts;
    for (const NewBlock& added : blocks_) {
        writer_.writeBlockBegin(*added.block, {{}, newHandle()});
        texts.push_back(edits_.takeText());
        texts.insert(texts.end(), added.entities.begin(), added.entities.end());
        writer_.writeBlockEnd(*added.block, {{}, newHandle()});
        texts.push_back(edits_.takeText());
    }
    sections_.put("BLOCKS", texts);
}

void SourceUpdate::assembleObjects() {
    const FileStretch* const inFile = map_.section("OBJECTS");
    if (inFile != nullptr && !root_.empty())
        edits_.insert(inFile->begin, root_.front());
    else
        objects_.insert(objects_.begin(), root_.begin(), root_.end());
    sections_.put("OBJECTS", objects_);
}

void SourceUpdate::assembleClasses() {
    const FileStretch* const inFile = map_.section("CLASSES");
    const std::string_view known =
        inFile == nullptr
            ? std::string_view()
            : source_.input->bytes().substr(inFile->head.offset, inFile->end - inFile->head.offset);
    std::vector<Text> texts;
    for (const std::string_view name : classes_) {
        if (holdsWord(known, name)) continue;
        if (writeClass(writer_.groups(), name)) texts.push_back(edits_.takeText());
    }
    if (form_.hasSubclasses()) sections_.put("CLASSES", texts);
}

void SourceUpdate::updateSettings() {
    DxfOutput variables(form_.version);
    putSettings(variables, db_, &source_.settings,
                [this](AcDbObjectId id) { return renamed_.contains(id); });
    for (const DxfOutTag& tag : variables.tags()) {
        if (tag.code == kVariableName) result_.variables.emplace_back(tag.chunk());
        if (tag.kind == DxfOutTag::Kind::kSymbol) mentioned(tag.id());
    }
    header_.set(variables);
}

void SourceUpdate::updateHandleSeed() {
    const bool any = handlesGiven_ || !written_.empty();
    if (!any || !form_.handles) return;
    const DxfTag* const stated = db_.headerVariables().find("$HANDSEED", kHandle);
    const std::uint64_t seed = db_.handseed();
    if (stated != nullptr && stated->handle() >= seed) return;
    DxfOutput variables(form_.version);
    variables.name(kVariableName, "$HANDSEED");
    variables.handleNumber(kHandle, seed);
    header_.set(variables);
}

std::uint64_t SourceUpdate::newHandle() {
    handlesGiven_ = true;
    return Residence::reserveHandle(db_);
}

} // namespace headless
