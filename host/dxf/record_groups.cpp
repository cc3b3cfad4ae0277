#include "dxf/record_groups.h"

#include "db/dxf_code.h"

namespace headless {

RecordGroups::RecordGroups(std::string_view file)
    : file_(file), scanner_(RecordScanner::make(file, report_)) {}

bool RecordGroups::read(SourceSpan span, std::size_t markers) {
    record_ = {};
    if (span.length == 0) return false;
    record_.begin = span.offset;
    record_.end = span.offset + span.length;
    tags_.clear();
    begins_.clear();
    scanner_->seek({span.offset, 1});
    DxfTag tag;
    std::uint64_t offset = 0;
    const auto next = [&] { return scanner_->nextGroup(tag, offset) && offset < record_.end; };
    bool more = next();
    if (more && tag.code == 0) {
        record_.name = tag.text();
        more = next();
    }
    while (more && tag.code != 0) {
        tags_.push_back(tag);
        begins_.push_back(offset);
        if (tag.code == AcDb::kDxfSubclass) --markers;
        more = markers > 0 && next();
    }
    record_.tags = tags_;
    return true;
}

std::string_view RecordGroups::nameBytes() const {
    return file_.substr(record_.begin, offset(0) - record_.begin);
}

std::string_view RecordGroups::allBytes() const {
    return file_.substr(record_.begin, record_.end - record_.begin);
}

} // namespace headless
