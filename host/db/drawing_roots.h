// What every drawing stands on: its nine tables, its root dictionary, layer 0, the two spaces.
#pragma once

#include "db/symbol_table.h"

class AcDbDictionary;
class AcDbLayerTableRecord;

namespace headless {

class DrawingRoots {
public:
    /// The table of that record class (AcDbLayerTableRecord::desc() and so on), made when the
    /// database has none; null for any other class.
    /// @param handle  for a table that is made; 0 or a taken one gives the next free handle.
    static AcDbSymbolTable* table(AcDbDatabase& db, const AcRxClass* recordClass,
                                  Adesk::UInt64 handle = 0);
    /// The root dictionary of a drawing read from a file.
    static void setNamedObjectsDictionary(AcDbDatabase& db, AcDbObjectId dictionary);

    // Complete what was read without opening it or counting as a change of it.
    static AcDbObjectId enterInto(AcDbDictionary& dictionary, const ACHAR* key, AcDbObjectId id);
    static void setLinetype(AcDbLayerTableRecord& layer, AcDbObjectId linetype);
};

/// Adds what a damaged or new drawing lacks: tables, the spaces, layer 0, the linetypes ByBlock,
/// ByLayer and Continuous, the style Standard of texts, dimensions and multilines, application
/// ACAD, viewport *Active, root dictionary with its fixed entries; and makes current what the
/// settings leave open. What is there stays as it is; doing it twice adds nothing.
void completeDefaults(AcDbDatabase& db);

} // namespace headless
