#include "db/drawing_roots.h"

#include <array>

#include "db/database.h"
#include "db/mline_style.h"
#include "db/residence.h"

namespace headless {
namespace {

template <class Record>
AcDbObjectId ensureRecord(AcDbDatabase& db, const ACHAR* name) {
    AcDbSymbolTable* const table = DrawingRoots::table(db, Record::desc());
    if (const AcDbObjectId known = table->findRecord(name); !known.isNull()) return known;
    auto record = std::make_unique<Record>();
    record->setName(name);
    return Residence::admitRecord(*table, std::move(record));
}

/// What the entry of that key is, made when it is missing or of another kind.
template <class T>
AcDbObjectId ensureEntry(AcDbDatabase& db, AcDbDictionary& dictionary, const ACHAR* key) {
    if (const AcDbObjectId known = dictionary.find(key); Residence::peek<T>(known) != nullptr)
        return known;
    return DrawingRoots::enterInto(
        dictionary, key, Residence::admit(db, std::make_unique<T>(), dictionary.objectId()));
}

void ensureLinetypes(AcDbDatabase& db) {
    ensureRecord<AcDbLinetypeTableRecord>(db, L"ByBlock");
    ensureRecord<AcDbLinetypeTableRecord>(db, L"ByLayer");
    ensureRecord<AcDbLinetypeTableRecord>(db, L"Continuous");
}

void ensureLayers(AcDbDatabase& db) {
    const AcDbObjectId zero = ensureRecord<AcDbLayerTableRecord>(db, L"0");
    auto* const layer = Residence::peek<AcDbLayerTableRecord>(zero);
    if (layer->linetypeOf().isNull()) DrawingRoots::setLinetype(*layer, db.continuousLinetype());
}

AcDbObjectId ensureTextStyle(AcDbDatabase& db) {
    return ensureRecord<AcDbTextStyleTableRecord>(db, L"Standard");
}

/// A viewport that is made shows the drawing's limits.
void ensureViewport(AcDbDatabase& db) {
    constexpr const ACHAR* kName = L"*Active";
    AcDbSymbolTable* const table = DrawingRoots::table(db, AcDbViewportTableRecord::desc());
    if (!table->findRecord(kName).isNull()) return;
    const AcGePoint2d least = db.limmin();
    const AcGeVector2d size = db.limmax() - least;
    View view;
    view.center = least + size / 2.0;
    view.height = size.y;
    makeUsable(view);
    auto record = std::make_unique<AcDbViewportTableRecord>();
    record->setName(kName);
    record->setView(view);
    record->setWidth(size.x);
    Residence::admitRecord(*table, std::move(record));
}

AcDbDictionary& ensureRoot(AcDbDatabase& db) {
    if (auto* const root = Residence::peek<AcDbDictionary>(db.namedObjectsDictionaryId()))
        return *root;
    const AcDbObjectId id = Residence::admit(db, std::make_unique<AcDbDictionary>());
    DrawingRoots::setNamedObjectsDictionary(db, id);
    return *Residence::peek<AcDbDictionary>(id);
}

AcDbObjectId ensureMlineStyle(AcDbDatabase& db, AcDbDictionary& styles) {
    constexpr const ACHAR* kName = L"Standard";
    if (const AcDbObjectId known = styles.find(kName); !known.isNull()) return known;
    auto style = std::make_unique<AcDbMlineStyle>();
    style->setName(kName);
    int index = 0;
    for (const double offset : {0.5, -0.5})
        style->addElement(index, offset, AcCmColor(), db.byLayerLinetype());
    return DrawingRoots::enterInto(styles, kName,
                                   Residence::admit(db, std::move(style), styles.objectId()));
}

void setIfNull(AcDbObjectId& setting, AcDbObjectId value) {
    if (!setting.isResident()) setting = value;
}

} // namespace

AcDbSymbolTable* DrawingRoots::table(AcDbDatabase& db, const AcRxClass* recordClass,
                                     Adesk::UInt64 handle) {
    struct Kind {
        AcRxClass* record;
        AcRxClass* table;
        AcDbObjectId& id;
    };
    const std::array kinds = {
        Kind{AcDbBlockTableRecord::desc(), AcDbBlockTable::desc(), db.tables_.block},
        Kind{AcDbDimStyleTableRecord::desc(), AcDbDimStyleTable::desc(), db.tables_.dimStyle},
        Kind{AcDbLayerTableRecord::desc(), AcDbLayerTable::desc(), db.tables_.layer},
        Kind{AcDbLinetypeTableRecord::desc(), AcDbLinetypeTable::desc(), db.tables_.linetype},
        Kind{AcDbTextStyleTableRecord::desc(), AcDbTextStyleTable::desc(), db.tables_.textStyle},
        Kind{AcDbRegAppTableRecord::desc(), AcDbRegAppTable::desc(), db.tables_.regApp},
        Kind{AcDbUCSTableRecord::desc(), AcDbUCSTable::desc(), db.tables_.ucs},
        Kind{AcDbViewTableRecord::desc(), AcDbViewTable::desc(), db.tables_.view},
        Kind{AcDbViewportTableRecord::desc(), AcDbViewportTable::desc(), db.tables_.viewport},
    };
    for (const Kind& kind : kinds) {
        if (kind.record != recordClass) continue;
        if (!kind.id.isResident()) {
            std::unique_ptr<AcDbObject> made(static_cast<AcDbObject*>(kind.table->create()));
            kind.id = Residence::admit(db, std::move(made), {}, handle);
        }
        return Residence::peek<AcDbSymbolTable>(kind.id);
    }
    return nullptr;
}

void DrawingRoots::setNamedObjectsDictionary(AcDbDatabase& db, AcDbObjectId dictionary) {
    db.namedObjects_ = dictionary;
}

AcDbObjectId DrawingRoots::enterInto(AcDbDictionary& dictionary, const ACHAR* key,
                                     AcDbObjectId id) {
    dictionary.insert(key, id);
    return id;
}

void DrawingRoots::setLinetype(AcDbLayerTableRecord& layer, AcDbObjectId linetype) {
    layer.linetypeId_ = linetype;
}

void completeDefaults(AcDbDatabase& db) {
    for (const AcRxClass* const kind :
         {AcDbBlockTableRecord::desc(), AcDbLayerTableRecord::desc(),
          AcDbTextStyleTableRecord::desc(), AcDbLinetypeTableRecord::desc(),
          AcDbViewTableRecord::desc(), AcDbUCSTableRecord::desc(), AcDbViewportTableRecord::desc(),
          AcDbRegAppTableRecord::desc(), AcDbDimStyleTableRecord::desc()})
        DrawingRoots::table(db, kind);
    ensureLinetypes(db);
    ensureLayers(db);
    const AcDbObjectId textStyle = ensureTextStyle(db);
    const AcDbObjectId dimStyle = ensureRecord<AcDbDimStyleTableRecord>(db, L"Standard");
    // Styles and layers say in these applications' data what their records have no groups for.
    for (const ACHAR* const name : {L"ACAD", L"AcAecLayerStandard", L"AcCmTransparency"})
        ensureRecord<AcDbRegAppTableRecord>(db, name);
    ensureViewport(db);
    ensureRecord<AcDbBlockTableRecord>(db, ACDB_MODEL_SPACE);
    ensureRecord<AcDbBlockTableRecord>(db, ACDB_PAPER_SPACE);

    AcDbDictionary& root = ensureRoot(db);
    ensureEntry<AcDbDictionary>(db, root, L"ACAD_GROUP");
    const AcDbObjectId styles = ensureEntry<AcDbDictionary>(db, root, L"ACAD_MLINESTYLE");
    const AcDbObjectId mlineStyle = ensureMlineStyle(db, *Residence::peek<AcDbDictionary>(styles));

    DrawingSettings& settings = db.settingsForWrite();
    setIfNull(settings.clayer, db.layerZero());
    setIfNull(settings.celtype, db.byLayerLinetype());
    setIfNull(settings.textstyle, textStyle);
    setIfNull(settings.dimstyle, dimStyle);
    setIfNull(settings.cmlstyle, mlineStyle);
}

} // namespace headless
