#include "db/database.h"

#include <algorithm>

#include "db/drawing_roots.h"
#include "db/mline_style.h"
#include "db/residence.h"
#include "db/state.h"
#include "db/undo_journal.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDatabase, AcRxObject)

using headless::Residence;

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool /*noDocument*/)
    : state_(&headless::DbState::current()) {
    state_->databases.push_back(this);
    if (buildDefaultDrawing) headless::completeDefaults(*this);
}

AcDbDatabase::~AcDbDatabase() {
    ending_ = true;
    if (state_ != nullptr) {
        std::erase(state_->databases, this);
        if (state_->services.workingDatabase() == this)
            state_->services.setWorkingDatabase(nullptr);
        state_->services.workingTransactionManager()->forget(*this);
    }
    // An object that owns others may delete them, so each is asked for anew.
    handles_.forEach([](AcDbStub& stub) { delete stub.object; });
}

Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.block, mode);
}

Acad::ErrorStatus AcDbDatabase::getDimStyleTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.dimStyle, mode);
}

Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.layer, mode);
}

Acad::ErrorStatus AcDbDatabase::getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.linetype, mode);
}

Acad::ErrorStatus AcDbDatabase::getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.textStyle, mode);
}

Acad::ErrorStatus AcDbDatabase::getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.regApp, mode);
}

Acad::ErrorStatus AcDbDatabase::getUCSTable(AcDbUCSTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.ucs, mode);
}

Acad::ErrorStatus AcDbDatabase::getViewTable(AcDbViewTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.view, mode);
}

Acad::ErrorStatus AcDbDatabase::getViewportTable(AcDbViewportTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.viewport, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
    return getBlockTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode) {
    return getDimStyleTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
    return getLayerTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode) {
    return getLinetypeTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode) {
    return getTextStyleTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbRegAppTable*& table, AcDb::OpenMode mode) {
    return getRegAppTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbUCSTable*& table, AcDb::OpenMode mode) {
    return getUCSTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbViewTable*& table, AcDb::OpenMode mode) {
    return getViewTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbViewportTable*& table, AcDb::OpenMode mode) {
    return getViewportTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dictionary,
                                                          AcDb::OpenMode mode) {
    return acdbOpenObject(dictionary, namedObjects_, mode);
}

AcDbObjectId AcDbDatabase::rootEntry(const ACHAR* key) const {
    const auto* const root = Residence::peek<AcDbDictionary>(namedObjects_);
    return root == nullptr ? AcDbObjectId() : root->find(key);
}

AcDbObjectId AcDbDatabase::groupDictionaryId() const { return rootEntry(L"ACAD_GROUP"); }
AcDbObjectId AcDbDatabase::mLStyleDictionaryId() const { return rootEntry(L"ACAD_MLINESTYLE"); }
AcDbObjectId AcDbDatabase::layoutDictionaryId() const { return rootEntry(L"ACAD_LAYOUT"); }

Acad::ErrorStatus AcDbDatabase::getGroupDictionary(AcDbDictionary*& dictionary,
                                                   AcDb::OpenMode mode) {
    return acdbOpenObject(dictionary, groupDictionaryId(), mode);
}

Acad::ErrorStatus AcDbDatabase::getMLStyleDictionary(AcDbDictionary*& dictionary,
                                                     AcDb::OpenMode mode) {
    return acdbOpenObject(dictionary, mLStyleDictionaryId(), mode);
}

AcDbObjectId AcDbDatabase::fixedRecord(AcDbObjectId& cached, AcDbObjectId table,
                                       const ACHAR* name) const {
    if (cached.isResident()) return cached;
    const auto* const records = Residence::peek<AcDbSymbolTable>(table);
    return cached = records == nullptr ? AcDbObjectId() : records->findRecord(name);
}

AcDbObjectId AcDbDatabase::modelSpaceId() const {
    return fixedRecord(fixed_.modelSpace, tables_.block, ACDB_MODEL_SPACE);
}

AcDbObjectId AcDbDatabase::paperSpaceId() const {
    return fixedRecord(fixed_.paperSpace, tables_.block, ACDB_PAPER_SPACE);
}

AcDbObjectId AcDbDatabase::layerZero() const {
    return fixedRecord(fixed_.layerZero, tables_.layer, L"0");
}

AcDbObjectId AcDbDatabase::byLayerLinetype() const {
    return fixedRecord(fixed_.byLayer, tables_.linetype, L"ByLayer");
}

AcDbObjectId AcDbDatabase::byBlockLinetype() const {
    return fixedRecord(fixed_.byBlock, tables_.linetype, L"ByBlock");
}

AcDbObjectId AcDbDatabase::continuousLinetype() const {
    return fixedRecord(fixed_.continuous, tables_.linetype, L"Continuous");
}

AcDbObjectId AcDbDatabase::currentSpaceId() const {
    if (!settings_.currentSpace.isNull()) return settings_.currentSpace;
    return settings_.tilemode ? modelSpaceId() : paperSpaceId();
}

Acad::ErrorStatus AcDbDatabase::setCurrentSpaceId(AcDbObjectId block) {
    return setRecord(&Settings::currentSpace, block, AcDbBlockTableRecord::desc());
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound,
                                                const AcDbHandle& handle,
                                                Adesk::UInt32 /*xrefId*/) {
    if (handle.isNull()) return Acad::eNullHandle;
    AcDbStub* const known = handles_.find(handle);
    const bool present = known != nullptr && (known->object != nullptr || known->permanentlyErased);
    if (createIfNotFound) {
        if (present) return Acad::eHandleExists;
        id = AcDbObjectId(Residence::announce(*this, handle));
        return Acad::eOk;
    }
    if (!present) return Acad::eUnknownHandle;
    id = AcDbObjectId(known);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObject* object) {
    AcDbObjectId id;
    return addAcDbObject(id, object);
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& id, AcDbObject* object) {
    if (object == nullptr) return Acad::eNullObjectPointer;
    const Acad::ErrorStatus status = Residence::enter(*this, *object, {});
    if (status == Acad::eOk) id = object->objectId();
    return status;
}

Acad::ErrorStatus AcDbDatabase::setHandseed(const AcDbHandle& seed) {
    handles_.raiseSeed(seed);
    return Acad::eOk;
}

headless::DrawingSettings& AcDbDatabase::settingsForWrite() {
    if (undoJournal_ != nullptr) undoJournal_->noteSettings();
    return settings_;
}

bool AcDbDatabase::undoRecording() const {
    return undoJournal_ != nullptr && undoJournal_->isRecording();
}

AcDbTransactionManager* AcDbDatabase::transactionManager() const {
    return headless::DbState::current().services.workingTransactionManager();
}

Acad::ErrorStatus AcDbDatabase::disableUndoRecording(bool disable) {
    if (undoJournal_ == nullptr) {
        if (!disable) undoJournal_ = std::make_unique<headless::UndoJournal>(*this);
    } else {
        undoJournal_->setRecording(!disable);
    }
    return Acad::eOk;
}

long AcDbDatabase::approxNumObjects() const { return static_cast<long>(handles_.size()); }

Acad::ErrorStatus AcDbDatabase::saveAs(const ACHAR* fileName) {
    if (fileName == nullptr || *fileName == L'\0') return Acad::eInvalidInput;
    const bool done = headless::DbState::current().save(*this, fileName).done;
    return done ? Acad::eOk : Acad::eCantOpenFile;
}

// Numbers are written with as many digits as they need, so there is no precision to lose.
Acad::ErrorStatus AcDbDatabase::dxfOut(const ACHAR* fileName, int /*precision*/) {
    return saveAs(fileName);
}

Acad::ErrorStatus AcDbDatabase::getFilename(const ACHAR*& name) const {
    name = filename_.c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::setRecord(AcDbObjectId Settings::*setting, AcDbObjectId id,
                                          const AcRxClass* kind) {
    if (id.isNull()) return Acad::eNullObjectId;
    if (id.database() != this) return Acad::eWrongDatabase;
    if (id.isErased()) return Acad::eWasErased;
    const AcDbObject* const record = Residence::peek(id);
    if (record == nullptr || !record->isKindOf(kind)) return Acad::eWrongObjectType;
    settingsForWrite().*setting = id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::setPositive(double Settings::*setting, double value) {
    if (!(value > 0.0)) return Acad::eOutOfRange;
    settingsForWrite().*setting = value;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layer) {
    return setRecord(&Settings::clayer, layer, AcDbLayerTableRecord::desc());
}

Acad::ErrorStatus AcDbDatabase::setCeltype(AcDbObjectId linetype) {
    return setRecord(&Settings::celtype, linetype, AcDbLinetypeTableRecord::desc());
}

Acad::ErrorStatus AcDbDatabase::setTextstyle(AcDbObjectId style) {
    return setRecord(&Settings::textstyle, style, AcDbTextStyleTableRecord::desc());
}

Acad::ErrorStatus AcDbDatabase::setDimstyle(AcDbObjectId style) {
    return setRecord(&Settings::dimstyle, style, AcDbDimStyleTableRecord::desc());
}

Acad::ErrorStatus AcDbDatabase::setCmlstyleID(AcDbObjectId style) {
    return setRecord(&Settings::cmlstyle, style, AcDbMlineStyle::desc());
}

Acad::ErrorStatus AcDbDatabase::setCecolor(const AcCmColor& color) {
    settingsForWrite().cecolor = color;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::setCelweight(AcDb::LineWeight weight) {
    settingsForWrite().celweight = weight;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::setCeltscale(double scale) {
    return setPositive(&Settings::celtscale, scale);
}

Acad::ErrorStatus AcDbDatabase::setLtscale(double scale) {
    return setPositive(&Settings::ltscale, scale);
}

Acad::ErrorStatus AcDbDatabase::setTextsize(double size) {
    return setPositive(&Settings::textsize, size);
}

Acad::ErrorStatus AcDbDatabase::setInsunits(short units) {
    constexpr short kMostUnits = 24;
    if (units < 0 || units > kMostUnits) return Acad::eOutOfRange;
    settingsForWrite().insunits = units;
    return Acad::eOk;
}

void AcDbDatabase::keepSource(std::shared_ptr<const void> owner, std::string_view bytes,
                              const headless::RecordArchive* archive) {
    sourceOwner_ = std::move(owner);
    sourceBytes_ = bytes;
    recordArchive_ = archive;
}

std::string_view AcDbDatabase::sourceOf(headless::SourceSpan span) const {
    if (span.offset > sourceBytes_.size() || span.length > sourceBytes_.size() - span.offset)
        return {};
    return sourceBytes_.substr(span.offset, span.length);
}
