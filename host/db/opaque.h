// Objects of kinds that the host does not model. They keep their place in the database, their name
// in drawing files and where their record stands; all else is read from there and written back.
#pragma once

#include <string_view>

#include "db/entity.h"

namespace headless {

/// The one copy of that text, which lives as long as the process.
[[nodiscard]] std::string_view interned(std::string_view text);

class OpaqueObject : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(OpaqueObject);

    explicit OpaqueObject(std::string_view dxfName = {}) : dxfName_(interned(dxfName)) {}

    std::string_view dxfName() const { return dxfName_; }

private:
    std::string_view dxfName_;
};

class OpaqueEntity : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(OpaqueEntity);

    explicit OpaqueEntity(std::string_view dxfName = {}) : dxfName_(interned(dxfName)) {}

    std::string_view dxfName() const { return dxfName_; }

private:
    std::string_view dxfName_;
};

/// The name by which drawing files call the object's kind: "LWPOLYLINE", "LAYER", ...; empty for a
/// kind that never stands in files. Lives as long as the process.
[[nodiscard]] std::string_view dxfName(const AcDbObject& object);

} // namespace headless
