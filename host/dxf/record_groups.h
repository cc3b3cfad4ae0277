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
    bool read(SourceSpan span);

    /// The record's name, the groups behind it, comments too.
    const ScannedRecord& record() const { return record_; }
    std::size_t size() const { return record_.tags.size(); }
    const DxfTag& operator[](std::size_t index) const { return record_.tags[index]; }

    /// The bytes of the groups from `begin` to before `end`.
    std::string_view bytes(std::size_t begin, std::size_t end) const;
    /// The bytes of the group with the name.
    std::string_view nameBytes() const;
    /// The bytes of all groups, the name too.
    std::string_view allBytes() const;
    /// Where a group begins in the file; of size(), where the record ends.
    std::uint64_t offset(std::size_t index) const;

private:
    std::string_view file_;
    DxfReadReport report_; // What is wrong with the record was told when it was read first.
    std::vector<std::uint64_t> begins_;
    std::unique_ptr<RecordScanner> scanner_;
    ScannedRecord record_;
};

} // namespace headless
