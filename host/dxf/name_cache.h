// Finds again what a name of the file stood for, without decoding it.
#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include "db/object_id.h"

class AcRxClass;

namespace headless {

/// Ids of table records by the bytes of their names, which must outlive the cache. Entities on the
/// same layer stand together, so each table's last name is tried first.
class NameCache {
public:
    /// The id kept for the name, or null.
    AcDbObjectId find(const AcRxClass* recordClass, std::string_view name);
    void keep(const AcRxClass* recordClass, std::string_view name, AcDbObjectId id);

private:
    struct Table {
        const AcRxClass* recordClass;
        std::string_view lastName;
        AcDbObjectId lastId;
        std::unordered_map<std::string_view, AcDbObjectId> ids;
    };
    Table& table(const AcRxClass* recordClass);

    std::vector<Table> tables_; // at most nine
};

} // namespace headless
