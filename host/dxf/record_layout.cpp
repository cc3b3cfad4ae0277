#include "dxf/record_layout.h"

#include <algorithm>

#include "db/dxf_code.h"
#include "dxf/group_codes.h"

namespace headless {
namespace {

/// The handle stands under 105 in dimension styles, where 5 is the name of an arrow.
int handleCode(std::string_view name) {
    return name == "DIMSTYLE" ? AcDb::kDxfDimVarHandle : AcDb::kDxfHandle;
}

} // namespace

void RecordLayout::setRole(std::size_t index, GroupRole role) {
    roles_[index] = role;
    if (role != GroupRole::kOwn && role != GroupRole::kKept)
        plainFrom_ = std::max(plainFrom_, index + 1);
}

void RecordLayout::drop(std::size_t index) { setRole(index, GroupRole::kDropped); }

/// Returns the index behind the closing brace; of braces that never close, behind the opening one.
std::size_t RecordLayout::describeBraces(const RecordGroups& groups, std::size_t open) {
    std::size_t close = open + 1;
    while (close < groups.size() &&
           !(groups[close].code == AcDb::kDxfControlString && groups[close].text() == "}"))
        ++close;
    roles_[open] = GroupRole::kKept;
    if (close == groups.size()) {
        closesBraces_ = false;
        return open + 1;
    }

    const bool inHead = !hasSubclasses();
    const std::string_view name = groups[open].text();
    const bool reactors = inHead && name == "{ACAD_REACTORS";
    const bool dictionary = inHead && name == "{ACAD_XDICTIONARY";
    for (std::size_t at = open; at <= close; ++at)
        setRole(at, reactors || dictionary ? GroupRole::kDropped : GroupRole::kKept);
    if (reactors && reactors_ == groups.size()) {
        reactors_ = open;
        setRole(open, GroupRole::kReactors);
    }
    if (dictionary && dictionary_ == groups.size()) {
        dictionary_ = open;
        setRole(open, GroupRole::kDictionary);
    }
    return close + 1;
}

void RecordLayout::describeHead(const RecordGroups& groups, std::size_t index) {
    const int code = groups[index].code;
    if (code == handleCode(groups.record().name) && handle_ == groups.size()) {
        handle_ = index;
        setRole(index, GroupRole::kHandle);
    } else if (code == AcDb::kDxfSoftPointerId && owner_ == groups.size()) {
        owner_ = index;
        setRole(index, GroupRole::kOwner);
    }
}

void RecordLayout::describe(const RecordGroups& groups) {
    const std::size_t size = groups.size();
    parts_.assign(1, {});
    roles_.assign(size, GroupRole::kOwn);
    tail_ = xdata_ = handle_ = owner_ = reactors_ = dictionary_ = size;
    plainFrom_ = 0;
    closesBraces_ = true;
    bool freeForm = false; // Extension records may hold any group, braces too.
    for (std::size_t at = 0; at < size;) {
        const DxfTag& tag = groups[at];
        // Nearly all that follows the head means nothing to the layout.
        if (tag.code < AcDb::kDxfSubclass && hasSubclasses()) {
            ++at;
            continue;
        }
        if (tag.code >= (freeForm ? int{AcDb::kDxfRegAppName} : kFirstXdataCode) ||
            (tag.code == AcDb::kDxfEmbeddedObjectStart && !freeForm)) {
            tail_ = at;
            break;
        }
        if (tag.code == AcDb::kDxfControlString && !freeForm && tag.text().starts_with('{')) {
            at = describeBraces(groups, at);
            continue;
        }
        if (tag.code == AcDb::kDxfSubclass) {
            parts_.back().end = at;
            parts_.push_back({tag.text(), at, at});
            freeForm = freeForm || tag.text() == "AcDbXrecord";
        } else if (tag.code == kCommentCode) {
            roles_[at] = GroupRole::kKept;
        } else if (!hasSubclasses()) {
            describeHead(groups, at);
        }
        ++at;
    }
    parts_.back().end = tail_;
    xdata_ = tail_;
    while (xdata_ < size && groups[xdata_].code < kFirstXdataCode)
        ++xdata_;
}

} // namespace headless
