#include "dxf/section_edits.h"

namespace headless {

SectionEdits::Text
SectionEdits::lines(std::initializer_list<std::pair<int, std::string_view>> groups) {
    for (const auto& [code, value] : groups)
        groups_.name(code, value);
    return edits_.takeText();
}

void SectionEdits::put(std::string_view name, const std::vector<Text>& texts) {
    if (texts.empty()) return;
    if (const FileStretch* const section = map_.section(name)) {
        for (const Text text : texts)
            edits_.insert(section->end, text);
        return;
    }
    constexpr int kName = 2;
    const std::uint64_t place = map_.placeFor(name);
    edits_.insert(place, lines({{0, "SECTION"}, {kName, name}}));
    for (const Text text : texts)
        edits_.insert(place, text);
    edits_.insert(place, lines({{0, "ENDSEC"}}));
}

} // namespace headless
