#include "dxf/source.h"

#include "db/database.h"

namespace headless {

std::shared_ptr<const DxfSource> dxfSource(const AcDbDatabase& db) {
    // Nobody but readDxf gives a database a source.
    return std::static_pointer_cast<const DxfSource>(db.sourceOwner());
}

} // namespace headless
