// The variables of a drawing file's header, kept as they were read and in their order.
#pragma once

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "db/dxf_filer.h"

namespace headless {

class HeaderVariables {
public:
    struct Variable {
        std::string name; // with its leading $, as in the file
        std::vector<DxfTag> values;
    };

    /// Values refer to bytes that the database keeps. A name that comes again replaces the first.
    void set(std::string_view name, std::span<const DxfTag> values);
    /// The values of `name` with its leading $; empty when the file does not have it.
    std::span<const DxfTag> find(std::string_view name) const;
    /// The first value of that group code, or null.
    const DxfTag* find(std::string_view name, int code) const;
    const std::vector<Variable>& all() const { return variables_; }

private:
    std::vector<Variable> variables_;
    // Names by content: damaged files have headers of any size.
    std::map<std::string, std::size_t, std::less<>> byName_;
};

/// Takes the drawing's settings (current layer, units, scales, extents and so on) from the header
/// variables the database has, leaving the settings it does not name. Call it when the tables are
/// read: names become ids. `filer` resolves names and texts.
void applyHeader(AcDbDatabase& db, AcDbDxfFiler& filer);

} // namespace headless
