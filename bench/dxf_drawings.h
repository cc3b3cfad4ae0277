// Drawings of any size for the benchmarks of reading.
#pragma once

#include <cstddef>
#include <filesystem>

namespace bench {

/// What a generated drawing holds.
enum class Content {
    kMixed,          // lines, circles, arcs, texts, points, references, polylines: a plan
    kClosedPolylines // boards: four to twelve vertices, one in four leaving with an arc
};

/// Writes a 2000 drawing of `entities` entities into a file that is deleted at the end of the run.
/// Asking again for the same drawing gives the same file.
const std::filesystem::path& drawing(Content content, std::size_t entities);

} // namespace bench
