// Reads the objects that are no entities: dictionaries, extension records, styles, layouts.
#pragma once

#include "dxf/context.h"

namespace headless {

class ObjectReader {
public:
    explicit ObjectReader(ReadContext& context) : context_(context) {}

    void read(const RecordParts& parts);

private:
    std::unique_ptr<AcDbObject> make(const RecordParts& parts) const;

    ReadContext& context_;
    bool rootRead_ = false;
};

} // namespace headless
