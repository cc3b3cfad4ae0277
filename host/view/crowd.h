// The blocks that a reference of too many parts shows, one level of nesting at a time.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_set>
#include <vector>

#include "db/geometry_sink.h"
#include "view/block_facts.h"
#include "view/looks.h"
#include "view/sheet_map.h"

namespace headless {

/// A block as a reference shows it.
struct PlacedBlock {
    /// The blocks around it, outermost first; those of one block share them.
    using Around = std::shared_ptr<const std::vector<AcDbStub*>>;

    AcDbObjectId block;
    AcGeMatrix3d toWorld;
    Traits traits;
    Around around;
};

/// Where a block's contents show on the sheet; empty for what has no bounds.
[[nodiscard]] SheetBox boxOnSheet(const AcDbExtents& box, const AcGeMatrix3d& toWorld,
                                  const SheetMap& map);
/// True for what shows within a pixel.
[[nodiscard]] bool isSpeck(const SheetBox& shown);

/// Blocks of one level. Of those that look alike on the same pixels one is kept.
class Crowd {
public:
    Crowd(const SheetMap& map, BlockFacts& facts) : map_(map), facts_(facts) {}

    bool isEmpty() const { return placed_.empty(); }
    void add(PlacedBlock placed);
    /// Those that were added; of more than `parts` entities in them a sample that is spread evenly.
    /// The crowd is empty then.
    [[nodiscard]] std::vector<PlacedBlock> take(double parts);

private:
    /// A block with where three corners of its box come to stand, in whole pixels.
    struct Place {
        AcDbStub* block;
        std::array<std::int32_t, 6> corners;
        Traits traits;
        bool operator==(const Place&) const = default;
    };
    struct HashOf {
        std::size_t operator()(const Place& place) const;
    };

    const SheetMap& map_;
    BlockFacts& facts_;
    std::vector<PlacedBlock> placed_;
    std::unordered_set<Place, HashOf> places_;
};

} // namespace headless
