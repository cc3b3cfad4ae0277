// Colours and transparency of entities and layers, four bytes each.
#pragma once

#include "rx/error_status.h"
#include "rx/types.h"

/// A colour: taken from the layer or the block, an index into the fixed palette of 255 colours, or
/// its red, green and blue parts.
class AcCmEntityColor {
public:
    enum ColorMethod : Adesk::UInt8 {
        kByLayer = 0xC0,
        kByBlock = 0xC1,
        kByColor = 0xC2,
        kByACI = 0xC3,
        kByPen = 0xC4,
        kForeground = 0xC5,
        kLayerOff = 0xC6,
        kLayerFrozen = 0xC7,
        kNone = 0xC8
    };
    enum ACIcolorMethod : Adesk::Int16 {
        kACIbyBlock = 0,
        kACIforeground = 7,
        kACIbyLayer = 256,
        kACIclear = 0,
        kACIRed = 1,
        kACIYellow = 2,
        kACIGreen = 3,
        kACICyan = 4,
        kACIBlue = 5,
        kACIMagenta = 6,
        kACIWhite = 7,
        kACIstandard = 7,
        kACImaximum = 255,
        kACInone = 257,
        kACIminimum = -255
    };

    AcCmEntityColor() = default; // By layer, as fresh entities are.
    explicit AcCmEntityColor(ColorMethod method) { setColorMethod(method); }
    AcCmEntityColor(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
        setRGB(red, green, blue);
    }

    ColorMethod colorMethod() const { return method_; }
    Acad::ErrorStatus setColorMethod(ColorMethod method);

    /// 0 by block, 1 to 255 the palette, 256 by layer, 257 none; 7, as drawn by devices that know
    /// no other colours, for red-green-blue colours.
    Adesk::UInt16 colorIndex() const;
    /// As colorIndex(), but the palette's closest for red-green-blue colours.
    Adesk::UInt16 nearestIndex() const;
    /// Takes 0 to 257; eBadColorIndex, changing nothing, for anything else.
    Acad::ErrorStatus setColorIndex(int index);

    /// Parts of 0 to 255. A palette colour has those of the palette; others are black.
    Adesk::UInt8 red() const;
    Adesk::UInt8 green() const;
    Adesk::UInt8 blue() const;
    Acad::ErrorStatus setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue);

    bool isByLayer() const { return method_ == kByLayer; }
    bool isByBlock() const { return method_ == kByBlock; }
    bool isByColor() const { return method_ == kByColor; }
    bool isByACI() const { return method_ == kByACI; }
    bool isForeground() const { return method_ == kForeground || (isByACI() && first_ == 7); }
    bool isNone() const { return method_ == kNone; }

    /// Method in the highest byte, then red, green and blue, or the palette index in the lowest.
    Adesk::UInt32 color() const;
    Acad::ErrorStatus setColor(Adesk::UInt32 packed);

    friend bool operator==(const AcCmEntityColor&, const AcCmEntityColor&) = default;

    /// The palette's colour as 0x00RRGGBB; black beyond 1 to 255.
    static Adesk::UInt32 lookUpRGB(Adesk::UInt8 index);

protected:
    ColorMethod method_ = kByLayer;
    Adesk::UInt8 first_ = 0; // Red, or the palette index.
    Adesk::UInt8 green_ = 0;
    Adesk::UInt8 blue_ = 0;
};

/// The colour as user interfaces hold it. Colour books are not kept, so it is its entity colour.
class AcCmColor : public AcCmEntityColor {
public:
    AcCmColor() = default;
    AcCmColor(const AcCmEntityColor& color) : AcCmEntityColor(color) {}

    const AcCmEntityColor& entityColor() const { return *this; }
};

/// How much of what lies behind shows through.
class AcCmTransparency {
public:
    enum transparencyMethod : Adesk::UInt8 {
        kByLayer = 0,
        kByBlock = 1,
        kByAlpha = 2,
        kErrorValue = 3
    };

    AcCmTransparency() = default; // By layer.
    explicit AcCmTransparency(Adesk::UInt8 alpha) { setAlpha(alpha); }
    explicit AcCmTransparency(transparencyMethod method) { setMethod(method); }

    transparencyMethod method() const { return method_; }
    void setMethod(transparencyMethod method);
    /// 0 clear to 255 solid.
    Adesk::UInt8 alpha() const { return alpha_; }
    void setAlpha(Adesk::UInt8 alpha);
    /// 0.0 clear to 1.0 solid.
    double alphaPercent() const { return alpha_ / 255.0; }
    void setAlphaPercent(double alpha);

    bool isByAlpha() const { return method_ == kByAlpha; }
    bool isByBlock() const { return method_ == kByBlock; }
    bool isByLayer() const { return method_ == kByLayer; }
    bool isInvalid() const { return method_ == kErrorValue; }
    bool isClear() const { return isByAlpha() && alpha_ == 0; }
    bool isSolid() const { return isByAlpha() && alpha_ == 255; }

    /// Method in the highest byte, alpha in the lowest, as drawing files hold it.
    Adesk::UInt32 serializeOut() const;
    void serializeIn(Adesk::UInt32 packed);

    friend bool operator==(const AcCmTransparency&, const AcCmTransparency&) = default;

private:
    transparencyMethod method_ = kByLayer;
    Adesk::UInt8 alpha_ = 255;
};
