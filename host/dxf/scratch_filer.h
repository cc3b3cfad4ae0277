// Reads objects once more from records whose drawing is in memory already, without leaving a trace
// in it.
#pragma once

#include <memory>

#include "db/dxf_filer.h"
#include "dxf/name_cache.h"
#include "dxf/record_groups.h"
#include "dxf/record_parts.h"
#include "dxf/text_decoder.h"

namespace headless {

class ScratchFiler : public AcDbDxfFiler {
public:
    ScratchFiler(AcDbDatabase& db, const TextDecoder& decoder);

    /// An object of the same class as `object` as the record describes it, in no database; null
    /// when it refuses.
    std::unique_ptr<AcDbObject> read(const AcDbObject& object, const RecordGroups& groups);

    std::wstring text(const DxfTag& tag) const override;
    AcDbObjectId objectId(const DxfTag& handle) override;
    /// The null id for what has no record of that name any more.
    AcDbObjectId symbolId(AcRxClass* recordClass, const DxfTag& name) override;
    void report(const DxfTag& tag, std::string_view problem) override;

    /// Prepares for reading parts of objects: the groups of that record are those read from now on.
    void show(const RecordGroups& groups);

private:
    TextDecoder decoder_;
    NameCache names_;
    DxfReadReport report_;
    RecordSplitter splitter_;
};

} // namespace headless
