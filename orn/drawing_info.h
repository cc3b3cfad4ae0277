// What a drawing holds, counted.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

class AcDbDatabase;

namespace orn {

/// Type names as drawing files have them, with how often each occurs.
using TypeCounts = std::map<std::string, std::size_t>;

struct BlockInfo {
    std::string name;
    TypeCounts entities;
};

struct LayerInfo {
    std::string name;
    bool off, frozen, locked, plot;
    int color; // index, never negative
    std::string linetype;
    int lineweight; // hundredths of a millimetre, or -3 for the default
};

/// All names in UTF-8, in the drawing's order.
struct DrawingInfo {
    std::string version;                        // such as AC1032
    TypeCounts entities;                        // model space, by type
    std::map<std::string, std::size_t> byLayer; // model space
    std::vector<BlockInfo> paperSpaces;
    std::vector<BlockInfo> blocks; // without the layouts' own
    std::vector<LayerInfo> layers;
    std::vector<std::string> linetypes, textStyles, dimStyles;
};

DrawingInfo collectInfo(AcDbDatabase& db);

/// One entity of model space.
struct EntityInfo {
    std::string handle, type, layer;
    /// xmin, ymin, zmin, xmax, ymax, zmax in world coordinates. References are measured without
    /// the texts in them, as text boxes depend on fonts. None for what has no bounds.
    std::optional<std::array<double, 6>> extents;
};

std::vector<EntityInfo> collectEntities(AcDbDatabase& db);

} // namespace orn
