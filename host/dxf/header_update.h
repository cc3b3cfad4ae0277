// Gives header variables of a file other values.
#pragma once

#include <span>
#include <vector>

#include "db/dxf_output.h"
#include "dxf/drawing_edits.h"
#include "dxf/file_map.h"
#include "dxf/record_groups.h"
#include "dxf/section_edits.h"

namespace headless {

class HeaderUpdate {
public:
    /// None may go away.
    /// @param groups  shows the header while it is worked on.
    HeaderUpdate(DrawingEdits& edits, const FileMap& map, RecordGroups& groups,
                 SectionEdits& sections)
        : edits_(edits), map_(map), groups_(groups), sections_(sections) {}

    /// @param variables  each a group of code 9 with the name and its values; those that the file
    ///                   does not have are put behind the others.
    void set(const DxfOutput& variables);

private:
    void setVariable(std::span<const DxfOutTag> variable, std::vector<DrawingEdits::Text>& missing);
    void replaceValue(std::size_t at, const DxfOutTag& tag);

    DrawingEdits& edits_;
    const FileMap& map_;
    RecordGroups& groups_;
    SectionEdits& sections_;
};

} // namespace headless
