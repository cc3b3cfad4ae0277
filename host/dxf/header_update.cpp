#include "dxf/header_update.h"

namespace headless {
namespace {

constexpr int kVariableName = 9;

} // namespace

void HeaderUpdate::set(const DxfOutput& variables) {
    if (const FileStretch* const header = map_.section("HEADER")) groups_.read(header->head);
    std::vector<DrawingEdits::Text> missing;
    const auto tags = variables.tags();
    std::size_t begin = 0;
    while (begin < tags.size()) {
        std::size_t end = begin + 1;
        while (end < tags.size() && tags[end].code != kVariableName)
            ++end;
        setVariable(tags.subspan(begin, end - begin), missing);
        begin = end;
    }
    sections_.put("HEADER", missing);
}

void HeaderUpdate::setVariable(std::span<const DxfOutTag> variable,
                               std::vector<DrawingEdits::Text>& missing) {
    const std::string_view name = variable.front().chunk();
    std::size_t at = 0;
    const std::size_t size = map_.section("HEADER") == nullptr ? 0 : groups_.size();
    while (at < size && !(groups_[at].code == kVariableName && groups_[at].text() == name))
        ++at;
    if (at == size) {
        for (const DxfOutTag& tag : variable)
            sections_.groups().tag(tag);
        missing.push_back(edits_.takeText());
        return;
    }
    for (const DxfOutTag& tag : variable.subspan(1)) {
        for (std::size_t i = at + 1; i < size && groups_[i].code != kVariableName; ++i) {
            if (groups_[i].code == tag.code) replaceValue(i, tag);
        }
    }
}

void HeaderUpdate::replaceValue(std::size_t at, const DxfOutTag& tag) {
    sections_.groups().tag(tag);
    const auto length = static_cast<std::uint32_t>(groups_.bytes(at, at + 1).size());
    edits_.replace({groups_.offset(at), length}, edits_.takeText());
}

} // namespace headless
