// Which records of tables got another name since the drawing was read.
#pragma once

#include <map>
#include <string>
#include <unordered_set>

#include "dxf/drawing_changes.h"
#include "dxf/record_groups.h"
#include "dxf/source.h"

namespace headless {

struct RenamedRecords {
    std::unordered_set<AcDbStub*> records;
    std::map<std::wstring, std::wstring> layers; // new names by the old ones in capitals
};

/// @param groups  of the file; shows another record afterwards.
[[nodiscard]] RenamedRecords findRenamed(const DrawingChanges& changes, const DxfSource& source,
                                         RecordGroups& groups);

} // namespace headless
