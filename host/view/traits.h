// How an entity is to look once layers and references have been asked.
#pragma once

#include "db/color.h"
#include "db/object_id.h"
#include "rx/types.h"
#include "view/canvas.h"

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

    static constexpr double kDefaultWeight = 0.25;
};

/// The look of an entity, open for reading, inside a reference of the given look. Layer "0" stands
/// for the reference's, as do properties by block.
[[nodiscard]] Traits traitsOf(const AcDbEntity& entity, const Traits& outer);

/// On white paper, where the foreground is black.
[[nodiscard]] PictureColor paperColor(const Traits& traits);

} // namespace headless
