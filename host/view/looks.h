// How an entity is to look once layers and references have been asked.
#pragma once

#include <set>
#include <unordered_map>
#include <vector>

#include "db/color.h"
#include "db/id_array.h"
#include "db/object_id.h"
#include "db/open_mode.h"
#include "rx/types.h"
#include "view/canvas.h"
#include "view/dashes.h"

class AcDbEntity;

namespace headless {

/// What an entity shows, and what entities inside it inherit when it is a reference.
struct Traits {
    AcDbObjectId layer;
    AcCmEntityColor color{AcCmEntityColor::kForeground};
    AcDbObjectId linetype; // null: continuous
    double linetypeScale = 1.0;
    double lineWeight = kDefaultWeight; // mm
    Adesk::UInt8 alpha = 255;
    bool isOff = false;    // nothing on the layer shows, yet a reference's contents may
    bool isFrozen = false; // neither does
    bool isHighlighted = false;

    bool operator==(const Traits&) const = default;

    static constexpr double kDefaultWeight = 0.25;
};

/// What layers and linetypes say, asked once for a picture.
class Looks {
public:
    /// The look of an entity, open for reading, inside a reference of the given look. Layer "0"
    /// stands for the reference's, as do properties by block.
    [[nodiscard]] Traits traitsOf(const AcDbEntity& entity, const Traits& outer);
    /// True when what is on the layer shows.
    [[nodiscard]] bool shows(AcDbObjectId layer);
    /// Good as long as the looks.
    [[nodiscard]] const LinePattern& patternOf(AcDbObjectId linetype);

    /// Hides these layers, and those hidden before no more.
    void freeze(const AcDbObjectIdArray& layers);

private:
    /// The defaults are those of a layer that is not there.
    struct LayerLook {
        AcCmEntityColor color{AcCmEntityColor::kForeground};
        AcDbObjectId linetype;
        AcDb::LineWeight lineWeight = AcDb::kLnWtByLwDefault;
        Adesk::UInt8 alpha = 255;
        bool isOff = false;
        bool isFrozen = false;
        bool isZero = true;
    };

    const LayerLook& layer(AcDbObjectId id);

    std::unordered_map<AcDbStub*, LayerLook> layers_;
    std::unordered_map<AcDbStub*, LinePattern> patterns_;
    std::set<AcDbStub*> frozen_;
};

/// @param foreground  what black or white things show as: the paper's opposite.
[[nodiscard]] PictureColor colorOnSheet(const Traits& traits, const PictureColor& foreground);

/// The colour of lines and letters: nobody draws these to be unseen, so in the paper's colour they
/// show as foreground, where hatches cover what is below.
[[nodiscard]] PictureColor inkOnSheet(const Traits& traits, const PictureColor& foreground);

} // namespace headless
