// Takes a record apart: what names the object and its place, and the groups it reads itself.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "dxf/read_report.h"
#include "dxf/record_scanner.h"

namespace headless {

/// The parts of one record; the groups live in the RecordSplitter that made it.
struct RecordParts {
    ScannedRecord record;
    /// Neither extended data, nor groups in braces, nor an embedded object.
    std::span<const DxfTag> own;
    std::uint64_t handle = 0;              // 0 in files without handles
    const DxfTag* handleTag = nullptr;     // the group that states it
    const DxfTag* owner = nullptr;         // code 330 outside braces, before the first subclass
    std::uint64_t extensionDictionary = 0; // handle
};

/// Splits records one after the other, reusing its memory.
class RecordSplitter {
public:
    explicit RecordSplitter(DxfReadReport& report) : report_(report) {}

    /// @param checkNumbers  whether malformed numbers are reported and made 0.
    RecordParts split(const ScannedRecord& record, bool checkNumbers);

private:
    void checkNumbers(RecordParts& parts);

    DxfReadReport& report_;
    std::vector<DxfTag> own_;
};

} // namespace headless
