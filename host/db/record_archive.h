// How the database gets at the file behind it: records that were read once can be read again, so
// what is rarely asked for need not be kept in memory.
#pragma once

#include <functional>
#include <span>

#include "db/dxf_filer.h"
#include "db/object.h"

namespace headless {

/// Implemented by whoever reads drawing files.
class RecordArchive {
public:
    /// @param groups  all groups of the record behind its name: extended data and those in braces
    ///                too. They and the filer are gone when the call returns.
    using Visit = std::function<void(std::span<const DxfTag> groups, AcDbDxfFiler& filer)>;

    virtual ~RecordArchive() = default;
    /// Shows the record that begins at `span`; a span without bytes shows nothing.
    virtual void read(AcDbDatabase& db, SourceSpan span, const Visit& visit) const = 0;

protected:
    RecordArchive() = default;
    RecordArchive(const RecordArchive&) = default;
    RecordArchive& operator=(const RecordArchive&) = default;
};

/// Shows the record that an object was read from; nothing for an object that never was in a file.
void readAgain(const AcDbObject& object, const RecordArchive::Visit& visit);

} // namespace headless
