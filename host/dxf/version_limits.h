// What drawing files of old versions can hold.
#pragma once

#include <string_view>

#include "db/object.h"
#include "dxf/group_writer.h"
#include "dxf/record_groups.h"

namespace headless {

/// False for what files of R12 have no word for: kinds of entities that came later, dictionaries
/// with something in them, data records.
bool fitsR12(const AcDbObject& object);

/// True when the records of a drawing of R12 state their handles: such files may do without.
bool statesHandles(const AcDbDatabase& db, RecordGroups& groups);

/// Writes the declaration (CLASS) that files need of a kind of objects; false for kinds that go
/// without saying.
bool writeClass(GroupWriter& to, std::string_view dxfName);

} // namespace headless
