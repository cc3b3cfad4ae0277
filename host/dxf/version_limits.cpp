#include "dxf/version_limits.h"

#include <algorithm>
#include <array>

#include "db/database.h"
#include "db/dictionary.h"
#include "db/entity.h"
#include "db/opaque.h"
#include "db/residence.h"

namespace headless {
namespace {

constexpr std::array<std::string_view, 18> kEntitiesOfR12 = {
    "LINE",   "POINT",    "CIRCLE", "ARC",      "TRACE",     "SOLID",
    "TEXT",   "SHAPE",    "INSERT", "ATTDEF",   "ATTRIB",    "3DFACE",
    "VERTEX", "POLYLINE", "SEQEND", "VIEWPORT", "DIMENSION", "3DLINE"};

/// What files declare of a class that is not one of the oldest.
struct ClassEntry {
    std::string_view dxfName;
    std::string_view className;
    std::string_view application = "ObjectDBX Classes";
    int capabilities = 0; // of stand-ins where the application is missing
    bool entity = false;
};

constexpr std::array<ClassEntry, 22> kDeclared = {{
    {"SORTENTSTABLE", "AcDbSortentsTable"},
    {"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault"},
    {"ACDBPLACEHOLDER", "AcDbPlaceHolder"},
    {"DICTIONARYVAR", "AcDbDictionaryVar"},
    {"LAYOUT", "AcDbLayout"},
    {"DIMASSOC", "AcDbDimAssoc", "AcDbDimAssoc"},
    {"IMAGE", "AcDbRasterImage", "ISM", 2175, true},
    {"IMAGEDEF", "AcDbRasterImageDef", "ISM"},
    {"IMAGEDEF_REACTOR", "AcDbRasterImageDefReactor", "ISM", 1},
    {"RASTERVARIABLES", "AcDbRasterVariables", "ISM"},
    {"WIPEOUT", "AcDbWipeout", "WipeOut", 127, true},
    {"WIPEOUTVARIABLES", "AcDbWipeoutVariables", "WipeOut"},
    {"MATERIAL", "AcDbMaterial", "ObjectDBX Classes", 1153},
    {"VISUALSTYLE", "AcDbVisualStyle", "ObjectDBX Classes", 4095},
    {"SCALE", "AcDbScale", "ObjectDBX Classes", 1153},
    {"SUN", "AcDbSun", "SCENEOE", 1153},
    {"TABLESTYLE", "AcDbTableStyle", "ObjectDBX Classes", 4095},
    {"ACAD_TABLE", "AcDbTable", "ObjectDBX Classes", 1025, true},
    {"MLEADERSTYLE", "AcDbMLeaderStyle", "ACDB_MLEADERSTYLE_CLASS", 4095},
    {"MULTILEADER", "AcDbMLeader", "ACDB_MLEADER_CLASS", 3071, true},
    {"HELIX", "AcDbHelix", "ObjectDBX Classes", 4095, true},
    {"MPOLYGON", "AcDbMPolygon", "AcMPolygonObj15", 1025, true},
}};

/// True when a program put something in.
bool holdsNew(const AcDbDictionary& dictionary) {
    const auto& entries = dictionary.entries();
    return std::any_of(entries.begin(), entries.end(), [](const AcDbDictionary::Entry& entry) {
        const AcDbObject* const object = Residence::peek(entry.id);
        return object != nullptr && !object->isErased() &&
               Residence::record(*object) == Residence::Record::kNew;
    });
}

} // namespace

bool fitsR12(const AcDbObject& object) {
    if (AcDbSymbolTable::cast(&object) != nullptr) return true;
    if (AcDbSymbolTableRecord::cast(&object) != nullptr) return true;
    if (const auto* const dictionary = AcDbDictionary::cast(&object)) return !holdsNew(*dictionary);
    if (AcDbEntity::cast(&object) == nullptr) return false;
    return std::find(kEntitiesOfR12.begin(), kEntitiesOfR12.end(), dxfName(object)) !=
           kEntitiesOfR12.end();
}

bool statesHandles(const AcDbDatabase& db, RecordGroups& groups) {
    if (const DxfTag* const handling = db.headerVariables().find("$HANDLING", 70))
        return handling->flag();
    for (const AcDbObjectId id : Residence::residents(db)) {
        const AcDbObject* const object = Residence::peek(id);
        if (AcDbEntity::cast(object) == nullptr || !groups.read(Residence::source(*object)))
            continue;
        return DxfRecord(groups.record().tags).find(5) != nullptr;
    }
    return false;
}

bool writeClass(GroupWriter& to, std::string_view dxfName) {
    const auto* const known =
        std::find_if(kDeclared.begin(), kDeclared.end(),
                     [dxfName](const ClassEntry& entry) { return entry.dxfName == dxfName; });
    if (known == kDeclared.end()) return false;
    to.name(0, "CLASS");
    to.name(1, known->dxfName);
    to.name(2, known->className);
    to.name(3, known->application);
    to.integer(90, known->capabilities);
    if (to.form().version >= DrawingVersion::k2004) to.integer(91, 1);
    to.integer(280, 0);
    to.integer(281, known->entity ? 1 : 0);
    return true;
}

} // namespace headless
