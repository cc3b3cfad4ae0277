#include "dxf/object_reader.h"

#include "db/database.h"
#include "db/drawing_roots.h"
#include "db/opaque.h"
#include "db/record_class.h"
#include "db/residence.h"

namespace headless {

std::unique_ptr<AcDbObject> ObjectReader::make(const RecordParts& parts) const {
    AcRxClass* const kind = classOfRecord(parts.record.name, DxfRecord(parts.own));
    if (kind == nullptr) return std::make_unique<OpaqueObject>(parts.record.name);
    const bool object = kind->isDerivedFrom(AcDbObject::desc()) &&
                        !kind->isDerivedFrom(AcDbEntity::desc()) &&
                        !kind->isDerivedFrom(AcDbSymbolTableRecord::desc());
    if (!object) return nullptr;
    return std::unique_ptr<AcDbObject>(static_cast<AcDbObject*>(kind->create()));
}

void ObjectReader::read(const RecordParts& parts) {
    std::unique_ptr<AcDbObject> object = make(parts);
    if (object == nullptr) {
        context_.leaveOut(parts, "such records do not stand among objects");
        return;
    }
    if (!context_.fill(*object, parts)) return;
    // The first dictionary is the root, whatever damaged files say of its owner.
    const bool root = !rootRead_ && AcDbDictionary::cast(object.get()) != nullptr;
    const AcDbObjectId id = Residence::admit(context_.db, std::move(object), {}, parts.handle);
    context_.settleHandle(id, parts);
    if (!root) return;
    rootRead_ = true;
    DrawingRoots::setNamedObjectsDictionary(context_.db, id);
}

} // namespace headless
