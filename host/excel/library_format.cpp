#include "excel/library_format.h"

#include <array>

#include "excel/library_calls.h"

namespace headless::excel {
namespace {

void setFont(lxw_format* format, const Font& font) {
    format_set_font_name(format, font.name.c_str());
    format_set_font_size(format, font.size);
    if (font.bold) format_set_bold(format);
    if (font.italic) format_set_italic(format);
    if (font.strikeout) format_set_font_strikeout(format);
    format_set_underline(format, static_cast<std::uint8_t>(font.underline));
    if (font.script != Script::kNormal) {
        format_set_font_script(format, static_cast<std::uint8_t>(font.script));
    }
    if (font.color) format_set_font_color(format, libraryColor(*font.color));
    // Not the theme's font any more, which would win over the name.
    if (font.name != "Calibri") format_set_font_scheme(format, "");
}

void setFill(lxw_format* format, const Fill& fill) {
    format_set_pattern(format, static_cast<std::uint8_t>(fill.pattern));
    const bool solid = fill.pattern == Pattern::kSolid;
    const Color& strokes = solid ? fill.color : fill.patternColor;
    if (strokes) format_set_fg_color(format, libraryColor(*strokes));
    if (!solid && fill.color) format_set_bg_color(format, libraryColor(*fill.color));
}

void setBorders(lxw_format* format, const Borders& borders) {
    struct Side {
        const BorderLine& line;
        void (*setStyle)(lxw_format*, std::uint8_t);
        void (*setColor)(lxw_format*, lxw_color_t);
    };
    const Side sides[] = {
        {borders.left, format_set_left, format_set_left_color},
        {borders.right, format_set_right, format_set_right_color},
        {borders.top, format_set_top, format_set_top_color},
        {borders.bottom, format_set_bottom, format_set_bottom_color},
        {borders.diagonal, format_set_diag_border, format_set_diag_color},
    };
    for (const Side& side : sides) {
        if (side.line.style == LineStyle::kNone) continue;
        side.setStyle(format, static_cast<std::uint8_t>(side.line.style));
        if (side.line.color) side.setColor(format, libraryColor(*side.line.color));
    }
    const int diagonals = (borders.diagonalUp ? LXW_DIAGONAL_BORDER_UP : 0) |
                          (borders.diagonalDown ? LXW_DIAGONAL_BORDER_DOWN : 0);
    if (diagonals != 0) format_set_diag_type(format, static_cast<std::uint8_t>(diagonals));
}

void setAlignment(lxw_format* format, const Alignment& alignment) {
    static constexpr std::array kVertical = {LXW_ALIGN_VERTICAL_BOTTOM, LXW_ALIGN_VERTICAL_TOP,
                                             LXW_ALIGN_VERTICAL_CENTER, LXW_ALIGN_VERTICAL_JUSTIFY,
                                             LXW_ALIGN_VERTICAL_DISTRIBUTED};
    // The horizontal ones are numbered as the library numbers them.
    if (alignment.horizontal != Horizontal::kGeneral) {
        format_set_align(format, static_cast<std::uint8_t>(alignment.horizontal));
    }
    if (alignment.vertical != Vertical::kBottom) {
        format_set_align(format, static_cast<std::uint8_t>(
                                     kVertical[static_cast<std::size_t>(alignment.vertical)]));
    }
    constexpr std::int16_t kLibrarysStackedText = 270;
    if (alignment.rotation == kStackedText) {
        format_set_rotation(format, kLibrarysStackedText);
    } else if (alignment.rotation != 0) {
        format_set_rotation(format, static_cast<std::int16_t>(alignment.rotation));
    }
    if (alignment.indent > 0) {
        format_set_indent(format, static_cast<std::uint8_t>(alignment.indent));
    }
    if (alignment.wrap) format_set_text_wrap(format);
    if (alignment.shrink) format_set_shrink(format);
}

void setAll(lxw_format* target, const CellFormat& format) {
    if (format.numberFormat != "General") {
        format_set_num_format(target, format.numberFormat.c_str());
    }
    setFont(target, format.font);
    setFill(target, format.fill);
    setBorders(target, format.borders);
    setAlignment(target, format.alignment);
    if (!format.locked) format_set_unlocked(target);
    if (format.formulaHidden) format_set_hidden(target);
    target->xf_id = format.style;
}

} // namespace

LibraryFormats::LibraryFormats(lxw_workbook* target, const FormatTable& source)
    : target_(target), source_(source) {
    // What has no format of its own follows the library's first one.
    formats_.push_back(STAILQ_FIRST(target->formats));
    setAll(formats_.front(), source.at(kDefaultFormat));
}

int LibraryFormats::addUnused(const CellFormat& format) {
    lxw_format* const made = workbook_add_format(target_);
    setAll(made, format);
    return lxw_format_get_xf_index(made);
}

lxw_format* LibraryFormats::at(FormatId id) {
    if (id >= formats_.size()) formats_.resize(id + 1, nullptr);
    if (formats_[id] == nullptr) {
        formats_[id] = workbook_add_format(target_);
        setAll(formats_[id], source_.at(id));
    }
    return formats_[id];
}

} // namespace headless::excel
