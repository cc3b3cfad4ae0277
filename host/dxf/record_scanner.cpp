#include "dxf/record_scanner.h"

#include "dxf/ascii_scanner.h"
#include "dxf/binary_scanner.h"
#include "dxf/group_codes.h"

namespace headless {

std::unique_ptr<RecordScanner> RecordScanner::make(std::string_view bytes, DxfReadReport& report) {
    const bool binary = BinaryScanner::recognises(bytes);
    report.setBinary(binary);
    if (binary) return std::make_unique<BinaryScanner>(bytes, report);
    return std::make_unique<AsciiScanner>(bytes, report);
}

bool RecordScanner::next(ScannedRecord& record) {
    tags_.clear();
    record = {};
    record.begin = hasHead_ ? headPosition_.offset : cursor_;
    record.place = hasHead_ ? head_.position : line_;
    if (hasHead_) record.name = head_.text();
    const bool headed = hasHead_;
    hasHead_ = false;

    while (true) {
        DxfTag& tag = tags_.emplace_back();
        const ScanPosition before{cursor_, line_};
        if (!readTag(tag)) {
            tags_.pop_back();
            record.cutOff = true;
            record.end = bytes_.size();
            break;
        }
        if (tag.code == kCommentCode) {
            tags_.pop_back();
        } else if (tag.code == 0) {
            head_ = tag;
            headPosition_ = before;
            hasHead_ = true;
            tags_.pop_back();
            record.end = before.offset;
            if (!headed && record.begin == record.end) return next(record);
            break;
        }
    }
    record.tags = tags_;
    const bool anything = headed || !tags_.empty() || record.end > record.begin;
    return failure_.empty() && anything;
}

ScanPosition RecordScanner::position() const {
    return hasHead_ ? headPosition_ : ScanPosition{cursor_, line_};
}

void RecordScanner::seek(ScanPosition position) {
    cursor_ = static_cast<std::size_t>(position.offset);
    line_ = position.line;
    hasHead_ = false;
}

} // namespace headless
