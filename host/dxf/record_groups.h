// The groups of a record that was read before, each with its bytes in the file.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "dxf/record_scanner.h"
#include "dxf/source.h"

namespace headless {

class RecordGroups {
public:
    /// Neither may go away. The bytes are those of a drawing file.
    explicit RecordGroups(std::string_view file);

    /// Shows another record; false for a span that holds none.
    bool read(SourceSpan span) { return read(span, kAll); }
    /// Shows the record up to the marker behind its first subclass, which is its last group then.
    bool readFirstSubclass(SourceSpan span) { return read(span, 2); }

    /// The record's name, the groups behind it, comments too.
    const ScannedRecord& record() const { return record_; }
    std::size_t size() const { return record_.tags.size(); }
    const DxfTag& operator[](std::size_t index) const { return record_.tags[index]; }

    /// The bytes of the groups from `begin` to before `end`.
    std::string_view bytes(std::size_t begin, std::size_t end) const {
        const std::uint64_t from = offset(begin);
        return {file_.data() + from, static_cast<std::size_t>(offset(end) - from)};
    }
    /// The bytes of the group with the name.
    std::string_view nameBytes() const;
    /// The bytes of all groups, the name too.
    std::string_view allBytes() const;
    /// Where a group begins in the file; of size(), where the record ends.
    std::uint64_t offset(std::size_t index) const {
        return index < begins_.size() ? begins_[index] : record_.end;
    }

private:
    static constexpr std::size_t kAll = static_cast<std::size_t>(-1);

    /// @param markers  of subclasses, the last of which ends what is shown.
    bool read(SourceSpan span, std::size_t markers);

    std::string_view file_;
    DxfReadReport report_; // What is wrong with the record was told when it was read first.
    std::vector<DxfTag> tags_;
    std::vector<std::uint64_t> begins_; // of the groups, in the file
    std::unique_ptr<RecordScanner> scanner_;
    ScannedRecord record_;
};

} // namespace headless
