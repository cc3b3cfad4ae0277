#include "db/color.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Parts of 0 to 255 are cut down to whole numbers.
constexpr Adesk::UInt32 pack(double red, double green, double blue) {
    return static_cast<Adesk::UInt32>(red) << 16 | static_cast<Adesk::UInt32>(green) << 8 |
           static_cast<Adesk::UInt32>(blue);
}

/// Colours 10 to 249 are 24 hues, 15 degrees apart, in five brightnesses each, and every one of
/// these once full and once half mixed with white.
Adesk::UInt32 paletteHue(int index) {
    constexpr std::array kBrightness = {255, 165, 127, 76, 38};
    constexpr int kFirst = 10;
    constexpr int kStepsOfSector = 4;
    const int hue = (index - kFirst) / 10;
    const int shade = (index - kFirst) % 10;
    const double full = kBrightness[static_cast<std::size_t>(shade / 2)];
    const double least = shade % 2 == 0 ? 0.0 : full / 2.0;

    const int sector = hue / kStepsOfSector;
    const double step = hue % kStepsOfSector / static_cast<double>(kStepsOfSector);
    const double rising = least + (full - least) * step;
    const double falling = full - (full - least) * step;
    switch (sector) {
    case 0:
        return pack(full, rising, least);
    case 1:
        return pack(falling, full, least);
    case 2:
        return pack(least, full, rising);
    case 3:
        return pack(least, falling, full);
    case 4:
        return pack(rising, least, full);
    default:
        return pack(full, least, falling);
    }
}

constexpr int kByBlockIndex = AcCmEntityColor::kACIbyBlock;
constexpr int kByLayerIndex = AcCmEntityColor::kACIbyLayer;
constexpr int kNoneIndex = AcCmEntityColor::kACInone;
constexpr int kForegroundIndex = AcCmEntityColor::kACIforeground;
constexpr int kMethodShift = 24;

} // namespace

Acad::ErrorStatus AcCmEntityColor::setColorMethod(ColorMethod method) {
    if (method < kByLayer || method > kNone) return Acad::eInvalidInput;
    method_ = method;
    first_ = green_ = blue_ = 0;
    if (method == kByACI) first_ = kForegroundIndex;
    return Acad::eOk;
}

Adesk::UInt16 AcCmEntityColor::colorIndex() const {
    switch (method_) {
    case kByLayer:
        return kByLayerIndex;
    case kByBlock:
        return kByBlockIndex;
    case kByACI:
        return first_;
    case kNone:
        return kNoneIndex;
    default:
        return kForegroundIndex;
    }
}

Adesk::UInt16 AcCmEntityColor::nearestIndex() const {
    if (!isByColor()) return colorIndex();
    const auto distance = [this](int index) {
        const Adesk::UInt32 other = lookUpRGB(static_cast<Adesk::UInt8>(index));
        const int red = first_ - static_cast<int>(other >> 16);
        const int green = green_ - static_cast<int>(other >> 8 & 0xFF);
        const int blue = blue_ - static_cast<int>(other & 0xFF);
        return red * red + green * green + blue * blue;
    };
    int nearest = 1;
    int least = distance(nearest);
    for (int index = 2; index <= kACImaximum && least > 0; ++index) {
        const int here = distance(index);
        if (here < least) nearest = index;
        least = std::min(least, here);
    }
    return static_cast<Adesk::UInt16>(nearest);
}

Acad::ErrorStatus AcCmEntityColor::setColorIndex(int index) {
    switch (index) {
    case kByBlockIndex:
        return setColorMethod(kByBlock);
    case kByLayerIndex:
        return setColorMethod(kByLayer);
    case kNoneIndex:
        return setColorMethod(kNone);
    default:
        break;
    }
    if (index < 0 || index > kACImaximum) return Acad::eBadColorIndex;
    setColorMethod(kByACI);
    first_ = static_cast<Adesk::UInt8>(index);
    return Acad::eOk;
}

Adesk::UInt8 AcCmEntityColor::red() const {
    return method_ == kByACI ? static_cast<Adesk::UInt8>(lookUpRGB(first_) >> 16) : first_;
}

Adesk::UInt8 AcCmEntityColor::green() const {
    return method_ == kByACI ? static_cast<Adesk::UInt8>(lookUpRGB(first_) >> 8) : green_;
}

Adesk::UInt8 AcCmEntityColor::blue() const {
    return method_ == kByACI ? static_cast<Adesk::UInt8>(lookUpRGB(first_)) : blue_;
}

Acad::ErrorStatus AcCmEntityColor::setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
    method_ = kByColor;
    first_ = red;
    green_ = green;
    blue_ = blue;
    return Acad::eOk;
}

Adesk::UInt32 AcCmEntityColor::color() const {
    const Adesk::UInt32 parts = method_ == kByACI ? first_ : pack(first_, green_, blue_);
    return Adesk::UInt32{method_} << kMethodShift | parts;
}

Acad::ErrorStatus AcCmEntityColor::setColor(Adesk::UInt32 packed) {
    const auto method = static_cast<Adesk::UInt8>(packed >> kMethodShift);
    const auto low = static_cast<Adesk::UInt8>(packed);
    if (method == kByColor)
        return setRGB(static_cast<Adesk::UInt8>(packed >> 16),
                      static_cast<Adesk::UInt8>(packed >> 8), low);
    if (method == kByACI) return low == 0 ? Acad::eBadColorIndex : setColorIndex(low);
    return setColorMethod(static_cast<ColorMethod>(method));
}

Adesk::UInt32 AcCmEntityColor::lookUpRGB(Adesk::UInt8 index) {
    constexpr std::array kFirst = {pack(0, 0, 0),      pack(255, 0, 0),     pack(255, 255, 0),
                                   pack(0, 255, 0),    pack(0, 255, 255),   pack(0, 0, 255),
                                   pack(255, 0, 255),  pack(255, 255, 255), pack(65, 65, 65),
                                   pack(128, 128, 128)};
    constexpr std::array kGreys = {pack(51, 51, 51),    pack(80, 80, 80),    pack(105, 105, 105),
                                   pack(130, 130, 130), pack(190, 190, 190), pack(255, 255, 255)};
    constexpr std::size_t kFirstGrey = 250;
    if (index < kFirst.size()) return kFirst[index];
    return index >= kFirstGrey ? kGreys[index - kFirstGrey] : paletteHue(index);
}

void AcCmTransparency::setMethod(transparencyMethod method) {
    method_ = method;
    alpha_ = 255;
}

void AcCmTransparency::setAlpha(Adesk::UInt8 alpha) {
    method_ = kByAlpha;
    alpha_ = alpha;
}

void AcCmTransparency::setAlphaPercent(double alpha) {
    setAlpha(static_cast<Adesk::UInt8>(std::lround(std::clamp(alpha, 0.0, 1.0) * 255.0)));
}

Adesk::UInt32 AcCmTransparency::serializeOut() const {
    const Adesk::UInt32 alpha = method_ == kByAlpha ? alpha_ : 0;
    return Adesk::UInt32{method_} << kMethodShift | alpha;
}

void AcCmTransparency::serializeIn(Adesk::UInt32 packed) {
    const Adesk::UInt32 method = packed >> kMethodShift;
    if (method >= kErrorValue)
        method_ = kErrorValue;
    else if (method == kByAlpha)
        setAlpha(static_cast<Adesk::UInt8>(packed));
    else
        setMethod(static_cast<transparencyMethod>(method));
}
