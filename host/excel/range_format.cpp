// What the cells of ranges look like.
#include "excel/format_names.h"
#include "excel/known_changes.h"
#include "excel/range_object.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

void putMember(IDispatch* object, DISPID member, const VARIANT& value) {
    VARIANT argument = value;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {&argument, &put, 1, 1};
    const HRESULT status =
        object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters,
                       nullptr, nullptr, nullptr);
    if (FAILED(status)) failToSet("BorderAround");
}

} // namespace

OwnedVariant Range::numberFormat() const {
    return common([](const CellFormat& f) { return fromUtf8(f.numberFormat); });
}

void Range::setNumberFormat(const VARIANT& value) {
    const std::string code = toUtf8(textOf(value));
    if (code.empty()) failToSet("NumberFormat");
    change([&](CellFormat& format) { format.numberFormat = code; });
}

OwnedVariant Range::horizontal() const {
    return common([](const CellFormat& f) { return numberOf(f.alignment.horizontal); });
}

void Range::setHorizontal(const VARIANT& value) {
    const auto horizontal = horizontalOf(integerOf(value));
    if (!horizontal) failToSet("HorizontalAlignment");
    change(
        [&](CellFormat& format) {
            format.alignment.horizontal = *horizontal;
            format.alignment.indent = 0;
        },
        {kChangeHorizontal, static_cast<std::uint64_t>(*horizontal)});
}

OwnedVariant Range::vertical() const {
    return common([](const CellFormat& f) { return numberOf(f.alignment.vertical); });
}

void Range::setVertical(const VARIANT& value) {
    const auto vertical = verticalOf(integerOf(value));
    if (!vertical) failToSet("VerticalAlignment");
    change([&](CellFormat& format) { format.alignment.vertical = *vertical; },
           {kChangeVertical, static_cast<std::uint64_t>(*vertical)});
}

OwnedVariant Range::indent() const {
    return common([](const CellFormat& f) { return LONG{f.alignment.indent}; });
}

void Range::setIndent(const VARIANT& value) {
    const LONG indent = integerOf(value);
    if (indent < 0 || indent > 250) failToSet("IndentLevel");
    change(
        [&](CellFormat& format) {
            Alignment& alignment = format.alignment;
            const bool takesIndent = alignment.horizontal == Horizontal::kLeft ||
                                     alignment.horizontal == Horizontal::kRight ||
                                     alignment.horizontal == Horizontal::kDistributed;
            // Only texts that lean against an edge can stand off it.
            if (indent > 0 && !takesIndent) alignment.horizontal = Horizontal::kLeft;
            alignment.indent = indent;
        },
        {kChangeIndent, static_cast<std::uint64_t>(indent)});
}

OwnedVariant Range::wrap() const {
    return common([](const CellFormat& f) { return f.alignment.wrap; });
}

void Range::setWrap(const VARIANT& value) {
    change([on = booleanOf(value)](CellFormat& format) {
        format.alignment.wrap = on;
        if (on) format.alignment.shrink = false; // Wrapped texts are not shrunk.
    });
}

OwnedVariant Range::shrink() const {
    return common([](const CellFormat& f) { return f.alignment.shrink; });
}

void Range::setShrink(const VARIANT& value) {
    change([on = booleanOf(value)](CellFormat& format) {
        format.alignment.shrink = on && !format.alignment.wrap;
    });
}

OwnedVariant Range::orientation() const {
    return common([](const CellFormat& f) {
        const int rotation = f.alignment.rotation;
        return rotation == kStackedText ? LONG{-4166}
               : rotation == 0          ? LONG{-4128}
                                        : LONG{rotation};
    });
}

void Range::setOrientation(const VARIANT& value) {
    LONG rotation = integerOf(value);
    if (rotation == -4128) rotation = 0;
    if (rotation == -4171) rotation = 90;
    if (rotation == -4170) rotation = -90;
    if (rotation == -4166) rotation = kStackedText;
    if ((rotation < -90 || rotation > 90) && rotation != kStackedText) {
        failToSet("Orientation");
    }
    change([&](CellFormat& format) { format.alignment.rotation = rotation; });
}

OwnedVariant Range::locked() const {
    return common([](const CellFormat& f) { return f.locked; });
}

void Range::setLocked(const VARIANT& value) {
    change([on = booleanOf(value)](CellFormat& format) { format.locked = on; });
}

IDispatch* Range::font() const { return makeFont(place_, area_); }

IDispatch* Range::interior() const { return makeInterior(place_, area_); }

IDispatch* Range::borders(const CallArguments& arguments) const {
    IDispatch* borders = makeBorders(place_, area_);
    if (!arguments.has(0)) return borders;
    const OwnedVariant all(borders);
    OwnedVariant index(arguments.integer(0, 0));
    DISPPARAMS parameters = {&index, nullptr, 1, 0};
    OwnedVariant one;
    const HRESULT status =
        borders->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                        &parameters, &one, nullptr, nullptr);
    if (FAILED(status)) fail("there is no such border");
    return one.release().pdispVal;
}

void Range::borderAround(const CallArguments& arguments) {
    const OwnedVariant borders(makeBorders(place_, area_));
    for (LONG edge = 7; edge <= 10; ++edge) {
        OwnedVariant index(edge);
        DISPPARAMS parameters = {&index, nullptr, 1, 0};
        OwnedVariant border;
        borders.pdispVal->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                 &parameters, &border, nullptr, nullptr);
        constexpr DISPID kMembers[] = {119, 120, 97, 99};
        for (std::size_t i = 0; i < std::size(kMembers); ++i) {
            const VARIANT* value = arguments.find(i);
            // A line without a style is a thin one.
            OwnedVariant fallback(LONG{1});
            if (value == nullptr && i > 0) continue;
            putMember(border.pdispVal, kMembers[i], value == nullptr ? fallback : *value);
        }
    }
}

} // namespace headless::excel
