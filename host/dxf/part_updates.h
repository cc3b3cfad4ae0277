// Vertices, attributes and the mark behind them in the file of their entity.
#pragma once

#include <cstdint>
#include <functional>
#include <unordered_set>
#include <vector>

#include "dxf/drawing_changes.h"
#include "dxf/drawing_edits.h"
#include "dxf/record_writer.h"

namespace headless {

class PartUpdates {
public:
    /// @param newHandle  answers a handle that nothing has yet.
    PartUpdates(const DrawingChanges& changes, DrawingEdits& edits, RecordWriter& writer,
                std::function<std::uint64_t()> newHandle);

    /// Brings the parts of all entities of the file up to date, but for the values of parts that
    /// stay where they are.
    void updateAll();
    /// Writes the parts of an entity that is written for the first time behind it.
    void writeAll(AcDbEntity& owner);
    /// Writes an entity of the file with its parts for another place, and takes what the file has
    /// of them out of where it stands.
    /// @param apart  gets these objects, which need no more updates.
    void moveAway(AcDbEntity& owner, std::unordered_set<const AcDbObject*>& apart);

    /// Parts that are written anew although they only moved.
    bool isDone(const AcDbObject* object) const { return done_.contains(object); }
    std::size_t added() const { return added_; }
    std::size_t moved() const { return done_.size(); }

private:
    std::vector<AcDbEntity*> partsOf(AcDbEntity& owner) const;
    void update(AcDbEntity& owner);
    std::uint64_t moveParts(const AcDbEntity& owner, const std::vector<AcDbEntity*>& parts);
    std::uint64_t insertParts(const AcDbEntity& owner, const std::vector<AcDbEntity*>& parts);
    void updateEnd(AcDbEntity& owner, bool anyParts, std::uint64_t place);
    void writeEnd(AcDbEntity& owner);

    const DrawingChanges& changes_;
    DrawingEdits& edits_;
    RecordWriter& writer_;
    std::function<std::uint64_t()> newHandle_;
    std::unordered_set<const AcDbObject*> done_;
    std::size_t added_ = 0;
};

} // namespace headless
