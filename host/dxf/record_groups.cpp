#include "dxf/record_groups.h"

namespace headless {

RecordGroups::RecordGroups(std::string_view file)
    : file_(file), scanner_(RecordScanner::make(file, report_)) {
    scanner_->noteGroups(begins_);
}

bool RecordGroups::read(SourceSpan span) {
    record_ = {};
    if (span.length == 0) return false;
    scanner_->seek({span.offset, 1});
    if (!scanner_->next(record_)) return false;
    record_.end = span.offset + span.length;
    return true;
}

std::uint64_t RecordGroups::offset(std::size_t index) const {
    return index < begins_.size() ? begins_[index] : record_.end;
}

std::string_view RecordGroups::bytes(std::size_t begin, std::size_t end) const {
    return file_.substr(offset(begin), offset(end) - offset(begin));
}

std::string_view RecordGroups::nameBytes() const {
    return file_.substr(record_.begin, offset(0) - record_.begin);
}

std::string_view RecordGroups::allBytes() const {
    return file_.substr(record_.begin, record_.end - record_.begin);
}

} // namespace headless
