// What the readers of a drawing's sections share.
#pragma once

#include <unordered_set>

#include "dxf/record_filer.h"
#include "dxf/record_parts.h"
#include "dxf/record_scanner.h"
#include "dxf/source.h"

class AcDbDatabase;
class AcDbEntity;

namespace headless {

struct ReadContext {
    ReadContext(AcDbDatabase& database, DxfSource& keptSource, RecordScanner& records,
                DxfReadReport& findings, BlockFinder& blocks)
        : db(database), source(keptSource), scanner(records), report(findings), splitter(findings),
          filer(database, findings, blocks) {}

    AcDbDatabase& db;
    DxfSource& source;
    RecordScanner& scanner;
    DxfReadReport& report;
    RecordSplitter splitter;
    RecordFiler filer;

    /// Notes a stretch of the file that no object stands for.
    void addPiece(DxfPiece::Kind kind, const ScannedRecord& record);
    /// Notes a record that is left out, and says why.
    void leaveOut(const RecordParts& parts, std::string_view why);

    /// Fills the object from its record and notes where that stands. False when the object refuses;
    /// the record is then noted as left out.
    bool fill(AcDbObject& object, const RecordParts& parts);

    void takeExtensionDictionary(AcDbObject& object, const RecordParts& parts);

    /// Called for an object that was to get the handle of its record: settles who keeps it when two
    /// objects state the same: an entity rather than another object, else the first.
    void settleHandle(AcDbObjectId id, const RecordParts& parts);

private:
    /// True for objects whose handle the file does not state.
    bool isGenerated(AcDbObjectId id) const;

    std::unordered_set<std::uint64_t> generated_; // handles given to records without one
    bool handlesStated_ = false;
};

SourceSpan spanOf(const ScannedRecord& record);

/// A group with that text, which must outlive it.
DxfTag textTag(std::string_view text);

/// The text of the record's first group of that code; empty when it has none.
std::string_view textOf(std::span<const DxfTag> tags, int code);

} // namespace headless
