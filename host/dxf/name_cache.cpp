#include "dxf/name_cache.h"

namespace headless {

NameCache::Table& NameCache::table(const AcRxClass* recordClass) {
    for (Table& table : tables_) {
        if (table.recordClass == recordClass) return table;
    }
    return tables_.emplace_back(Table{recordClass, {}, {}, {}});
}

AcDbObjectId NameCache::find(const AcRxClass* recordClass, std::string_view name) {
    Table& names = table(recordClass);
    if (!names.lastId.isNull() && names.lastName == name) return names.lastId;
    const auto found = names.ids.find(name);
    if (found == names.ids.end()) return {};
    names.lastName = name;
    names.lastId = found->second;
    return found->second;
}

void NameCache::keep(const AcRxClass* recordClass, std::string_view name, AcDbObjectId id) {
    Table& names = table(recordClass);
    names.ids.insert_or_assign(name, id);
    names.lastName = name;
    names.lastId = id;
}

} // namespace headless
