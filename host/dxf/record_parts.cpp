#include "dxf/record_parts.h"

#include "dxf/group_codes.h"
#include "dxf/value_check.h"

namespace headless {
namespace {

constexpr int kEmbeddedObjectCode = 101;
constexpr int kBraceCode = 102;
constexpr int kSubclassCode = 100;

bool closesBraces(const DxfTag& tag) { return tag.code == kBraceCode && tag.text() == "}"; }

/// Index behind the group in braces that opens at `open`; a group that never closes is `open`
/// alone. `lastClose` is one behind the record's last closing brace: without it a record of nothing
/// but opening braces would take quadratic time.
std::size_t behindBraces(std::span<const DxfTag> tags, std::size_t open, std::size_t lastClose) {
    for (std::size_t at = open + 1; at < lastClose; ++at) {
        if (closesBraces(tags[at])) return at + 1;
    }
    return open + 1;
}

std::size_t behindLastClose(std::span<const DxfTag> tags) {
    std::size_t behind = tags.size();
    while (behind > 0 && !closesBraces(tags[behind - 1]))
        --behind;
    return behind;
}

void noteBraces(std::span<const DxfTag> group, RecordParts& parts) {
    if (group.front().text() != "{ACAD_XDICTIONARY") return;
    for (const DxfTag& tag : group) {
        if (tag.code == 360) parts.extensionDictionary = tag.handle();
    }
}

/// The handle stands under 105 in dimension styles, where 5 is the name of an arrow.
int handleCode(std::string_view name) { return name == "DIMSTYLE" ? 105 : 5; }

bool ownsEverything(std::span<const DxfTag> tags) {
    for (const DxfTag& tag : tags) {
        if (tag.code == kBraceCode || tag.code == kEmbeddedObjectCode ||
            tag.code >= kFirstXdataCode) {
            return false;
        }
    }
    return true;
}

} // namespace

RecordParts RecordSplitter::split(const ScannedRecord& record, bool checksNumbers) {
    RecordParts parts;
    parts.record = record;
    const std::span<const DxfTag> tags = record.tags;
    own_.clear();
    own_.reserve(tags.size());
    if (ownsEverything(tags)) {
        own_.assign(tags.begin(), tags.end());
    } else {
        const std::size_t lastClose = behindLastClose(tags);
        bool freeForm = false; // Extension records may hold any group, braces too.
        for (std::size_t at = 0; at < tags.size();) {
            const DxfTag& tag = tags[at];
            if (tag.code == kEmbeddedObjectCode || tag.code >= kFirstXdataCode) break;
            if (tag.code == kSubclassCode && tag.text() == "AcDbXrecord") freeForm = true;
            if (tag.code == kBraceCode && !freeForm && tag.text().starts_with('{')) {
                const std::size_t behind = behindBraces(tags, at, lastClose);
                noteBraces(tags.subspan(at, behind - at), parts);
                at = behind;
                continue;
            }
            own_.push_back(tag);
            ++at;
        }
    }
    parts.own = own_;

    const int handle = handleCode(record.name);
    for (const DxfTag& tag : parts.own) {
        if (tag.code == kSubclassCode) break;
        if (tag.code == handle && parts.handleTag == nullptr) parts.handleTag = &tag;
        if (tag.code == 330 && parts.owner == nullptr) parts.owner = &tag;
    }
    if (parts.handleTag != nullptr) parts.handle = parts.handleTag->handle();
    if (checksNumbers) checkNumbers(parts);
    return parts;
}

void RecordSplitter::checkNumbers(RecordParts& parts) {
    if (parts.handleTag != nullptr && parts.handle == 0) {
        report_.add(parts.handleTag->position, 0,
                    quote(parts.handleTag->text()) + " is no handle; a new one is given");
    }
    for (DxfTag& tag : own_) {
        if (const auto problem = checkValue(tag)) {
            report_.add(tag.position, parts.handle,
                        std::string(parts.record.name) + ", group " + std::to_string(tag.code) +
                            ": " + std::string(*problem));
        }
    }
}

} // namespace headless
