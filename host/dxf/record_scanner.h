// Cuts a drawing file into records: a group of code 0 and all groups up to the next.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "db/dxf_filer.h"
#include "dxf/read_report.h"

namespace headless {

/// One record. Its groups are valid until the scanner moves on; their texts as long as the file.
struct ScannedRecord {
    std::string_view name;        // text of code 0; empty for groups before the first code 0
    std::span<const DxfTag> tags; // the groups after code 0, without comments
    std::uint64_t begin = 0;      // of the record's bytes in the file
    std::uint64_t end = 0;
    std::uint32_t place = 0; // line or offset of code 0
    bool cutOff = false;     // the file ends within it, or right behind it
};

/// Where a scanner can go on later.
struct ScanPosition {
    std::uint64_t offset = 0;
    std::uint32_t line = 1;
};

/// Runs through a file record by record, without copying a value.
class RecordScanner {
public:
    /// Longer lines are in no drawing; a file that has one is refused without looking at its rest.
    static constexpr std::size_t kLongestLine = 1U << 20;

    /// The scanner for ASCII or binary files. Neither the bytes nor the report may go away.
    static std::unique_ptr<RecordScanner> make(std::string_view bytes, DxfReadReport& report);

    virtual ~RecordScanner() = default;
    RecordScanner(const RecordScanner&) = delete;
    RecordScanner& operator=(const RecordScanner&) = delete;

    /// Reads the next record; false at the end of the file or after a failure.
    bool next(ScannedRecord& record);

    /// Why the file cannot be read any further, naming the place; empty while it can.
    const std::string& failure() const { return failure_; }

    /// Where the next record begins.
    ScanPosition position() const;
    void seek(ScanPosition position);
    /// Reads the group at a place that seek went to, whatever record it is of, comments too; false
    /// as with next, which may only follow another seek.
    bool nextGroup(DxfTag& tag, std::uint64_t& offset) {
        offset = cursor_;
        return readTag(tag);
    }
    /// Goes to the first record.
    void rewind() { seek(start_); }

    std::size_t size() const { return bytes_.size(); }

protected:
    RecordScanner(std::string_view bytes, DxfReadReport& report) : bytes_(bytes), report_(report) {}

    /// Reads one group from cursor_ on and moves behind it; false at the end or after a failure.
    virtual bool readTag(DxfTag& tag) = 0;
    void fail(std::string text) { failure_ = std::move(text); }

    std::string_view bytes_;
    std::size_t cursor_ = 0;
    std::uint32_t line_ = 1; // of the cursor; binary files have none
    ScanPosition start_;     // of the first group
    DxfReadReport& report_;

private:
    std::vector<DxfTag> tags_;
    std::string failure_;
    // The code 0 that ended the record before, already read.
    DxfTag head_;
    ScanPosition headPosition_;
    bool hasHead_ = false;
};

} // namespace headless
