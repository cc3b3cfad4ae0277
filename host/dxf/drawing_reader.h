// Goes through a drawing section by section.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "dxf/block_reader.h"
#include "dxf/context.h"
#include "dxf/object_reader.h"
#include "dxf/table_reader.h"

namespace headless {

class DrawingReader : private BlockFinder {
public:
    DrawingReader(AcDbDatabase& db, DxfSource& source, RecordScanner& scanner,
                  DxfReadReport& report, std::function<void(double)> progress);

    /// Reads to the end of the file. The answer says why it is no drawing, or is empty.
    std::string read();

private:
    enum class Section { kHeader, kTables, kBlocks, kEntities, kObjects, kOther, kNone };

    struct SectionPlace {
        Section section;
        ScanPosition position;
    };

    void announceBlocks() override;

    /// Reads one record and what belongs with it; false at the end mark.
    bool readRecord(const ScannedRecord& record);
    void enterSection(const ScannedRecord& record);
    void leaveSection();
    void readSectionRecord(const ScannedRecord& record);
    void readLooseRecord(const RecordParts& parts);
    /// Moves to the section's end, which is left unread; answers where that is.
    ScanPosition skipSection();

    static Section sectionOf(std::string_view name);
    /// All sections of the file with those that others need, found at first use.
    const std::vector<SectionPlace>& index();
    /// Some programs write the sections in an order of their own: header, tables and blocks are
    /// read before what refers to them.
    void readAheadOf(Section section);
    void readWholeSection(const SectionPlace& place);
    void ensureLayerZero();

    ReadContext context_;
    TableReader tables_;
    BlockReader blocks_;
    ObjectReader objects_;
    std::function<void(double)> progress_;

    Section section_ = Section::kNone;
    std::set<Section> read_;
    std::set<std::uint64_t> readAhead_; // offsets of sections read before their turn
    std::optional<std::vector<SectionPlace>> index_;
    bool anything_ = false; // that shows the file to be a drawing
    bool anyLoose_ = false;
};

} // namespace headless
