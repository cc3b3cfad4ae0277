// Puts more into the sections of a file.
#pragma once

#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

#include "dxf/drawing_edits.h"
#include "dxf/file_map.h"
#include "dxf/group_writer.h"

namespace headless {

class SectionEdits {
public:
    using Text = DrawingEdits::Text;

    /// None may go away.
    /// @param groups  writes to the buffer of the edits.
    SectionEdits(DrawingEdits& edits, const FileMap& map, GroupWriter& groups)
        : edits_(edits), map_(map), groups_(groups) {}

    /// Puts the texts at the section's end; a section that the file lacks is made.
    void put(std::string_view name, const std::vector<Text>& texts);
    /// A text of groups, by their codes and values.
    Text lines(std::initializer_list<std::pair<int, std::string_view>> groups);
    GroupWriter& groups() { return groups_; }

private:
    DrawingEdits& edits_;
    const FileMap& map_;
    GroupWriter& groups_;
};

} // namespace headless
