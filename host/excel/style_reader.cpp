#include "excel/style_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>

#include "excel/file_names.h"
#include "excel/number_formats.h"
#include "excel/old_palette.h"

namespace headless::excel {
namespace {

std::uint32_t parseHex(std::string_view text) {
    constexpr std::size_t kWithoutAlpha = 6;
    if (text.size() > kWithoutAlpha) text.remove_prefix(text.size() - kWithoutAlpha);
    std::uint32_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return value;
}

/// Each channel moved towards white (positive) or black by that part of the way.
std::uint32_t tinted(std::uint32_t rgb, double tint) {
    std::uint32_t result = 0;
    for (const int shift : {16, 8, 0}) {
        const double channel = static_cast<double>(rgb >> shift & 0xFFU);
        const double moved =
            tint < 0.0 ? channel * (1.0 + tint) : channel + (255.0 - channel) * tint;
        const long rounded = std::clamp(std::lround(moved), 0L, 255L);
        result |= static_cast<std::uint32_t>(rounded) << shift;
    }
    return result;
}

/// True for <b/>, <b val="1"/> and the like.
bool flag(const pugi::xml_node& parent, std::string_view name) {
    const pugi::xml_node node = child(parent, name);
    return node && node.attribute("val").as_bool(true);
}

Font readFont(const pugi::xml_node& node, const ColorReader& colors) {
    Font font;
    if (const auto name = child(node, "name")) font.name = name.attribute("val").value();
    if (const auto size = child(node, "sz")) font.size = size.attribute("val").as_double(font.size);
    font.bold = flag(node, "b");
    font.italic = flag(node, "i");
    font.strikeout = flag(node, "strike");
    if (const auto underline = child(node, "u")) {
        static constexpr std::array<std::string_view, 5> kNames = {
            "none", "single", "double", "singleAccounting", "doubleAccounting"};
        font.underline =
            named(underline.attribute("val").as_string("single"), kNames, Underline::kSingle);
    }
    if (const auto script = child(node, "vertAlign")) {
        static constexpr std::array<std::string_view, 3> kNames = {"baseline", "superscript",
                                                                   "subscript"};
        font.script = named(script.attribute("val").value(), kNames, Script::kNormal);
    }
    font.color = colors.read(child(node, "color"));
    return font;
}

Fill readFill(const pugi::xml_node& node, const ColorReader& colors) {
    static constexpr std::array<std::string_view, 19> kNames = {
        "none",           "solid",           "mediumGray",    "darkGray",  "lightGray",
        "darkHorizontal", "darkVertical",    "darkDown",      "darkUp",    "darkGrid",
        "darkTrellis",    "lightHorizontal", "lightVertical", "lightDown", "lightUp",
        "lightGrid",      "lightTrellis",    "gray125",       "gray0625"};
    const pugi::xml_node pattern = child(node, "patternFill");
    Fill fill;
    fill.pattern = named(pattern.attribute("patternType").value(), kNames, Pattern::kNone);
    const Color strokes = colors.read(child(pattern, "fgColor"));
    if (fill.pattern == Pattern::kSolid) {
        fill.color = strokes;
    } else {
        fill.patternColor = strokes;
        fill.color = colors.read(child(pattern, "bgColor"));
    }
    return fill;
}

BorderLine readLine(const pugi::xml_node& node, const ColorReader& colors) {
    static constexpr std::array<std::string_view, 14> kNames = {"none",
                                                                "thin",
                                                                "medium",
                                                                "dashed",
                                                                "dotted",
                                                                "thick",
                                                                "double",
                                                                "hair",
                                                                "mediumDashed",
                                                                "dashDot",
                                                                "mediumDashDot",
                                                                "dashDotDot",
                                                                "mediumDashDotDot",
                                                                "slantDashDot"};
    BorderLine line;
    line.style = named(node.attribute("style").value(), kNames, LineStyle::kNone);
    if (line.style != LineStyle::kNone) line.color = colors.read(child(node, "color"));
    return line;
}

Borders readBorders(const pugi::xml_node& node, const ColorReader& colors) {
    Borders borders;
    // Stricter files name the sides by the direction of reading.
    const auto side = [&](const char* name, const char* strict) {
        const pugi::xml_node found = child(node, name);
        return readLine(found ? found : child(node, strict), colors);
    };
    borders.left = side("left", "start");
    borders.right = side("right", "end");
    borders.top = readLine(child(node, "top"), colors);
    borders.bottom = readLine(child(node, "bottom"), colors);
    borders.diagonal = readLine(child(node, "diagonal"), colors);
    borders.diagonalUp = node.attribute("diagonalUp").as_bool();
    borders.diagonalDown = node.attribute("diagonalDown").as_bool();
    return borders;
}

Alignment readAlignment(const pugi::xml_node& node) {
    static constexpr std::array<std::string_view, 8> kHorizontal = {
        "general", "left", "center", "right", "fill", "justify", "centerContinuous", "distributed"};
    static constexpr std::array<std::string_view, 5> kVertical = {"bottom", "top", "center",
                                                                  "justify", "distributed"};
    Alignment alignment;
    alignment.horizontal =
        named(node.attribute("horizontal").value(), kHorizontal, Horizontal::kGeneral);
    alignment.vertical = named(node.attribute("vertical").value(), kVertical, Vertical::kBottom);
    alignment.indent = node.attribute("indent").as_int();
    // Files count downward angles from 90 on.
    const int rotation = node.attribute("textRotation").as_int();
    alignment.rotation = rotation > 90 && rotation <= 180 ? 90 - rotation : rotation;
    alignment.wrap = node.attribute("wrapText").as_bool();
    alignment.shrink = node.attribute("shrinkToFit").as_bool();
    return alignment;
}

template <class Value, class Read>
std::vector<Value> readAll(const pugi::xml_node& list, Read read) {
    std::vector<Value> values;
    for (const pugi::xml_node& node : list.children())
        values.push_back(read(node));
    return values;
}

template <class Value>
Value pick(const std::vector<Value>& values, const pugi::xml_attribute& index) {
    const auto at = static_cast<std::size_t>(index.as_uint());
    return at < values.size() ? values[at] : Value{};
}

std::map<std::string, std::string> attributesOf(const pugi::xml_node& node,
                                                std::initializer_list<const char*> names) {
    std::map<std::string, std::string> values;
    for (const char* name : names)
        if (const auto attribute = node.attribute(name)) values[name] = attribute.value();
    return values;
}

/// The formats of cells and of named styles, which are told by the same lists.
class StyleReader {
public:
    StyleReader(const pugi::xml_node& root, const ColorReader& colors) : root_(root) {
        for (const pugi::xml_node& node : child(root, "numFmts").children())
            codes_[node.attribute("numFmtId").as_int()] = node.attribute("formatCode").value();
        fonts_ =
            readAll<Font>(child(root, "fonts"), [&](const auto& n) { return readFont(n, colors); });
        fills_ =
            readAll<Fill>(child(root, "fills"), [&](const auto& n) { return readFill(n, colors); });
        borders_ = readAll<Borders>(child(root, "borders"),
                                    [&](const auto& n) { return readBorders(n, colors); });
    }

    std::vector<FormatId> read(Workbook& book) const {
        const std::map<unsigned, int> styles = readNamed(book.styles);
        std::vector<FormatId> ids;
        for (const pugi::xml_node& node : child(root_, "cellXfs").children()) {
            CellFormat format = readFormat(node);
            const auto style = styles.find(node.attribute("xfId").as_uint());
            if (style != styles.end()) format.style = style->second;
            if (ids.empty()) book.formats.setDefault(format);
            ids.push_back(book.formats.add(format));
        }
        if (ids.empty()) ids.push_back(kDefaultFormat);
        return ids;
    }

private:
    /// @return  the places in the list by the numbers that cells name them with.
    std::map<unsigned, int> readNamed(std::vector<CellStyle>& styles) const {
        const auto formats = readAll<CellFormat>(child(root_, "cellStyleXfs"),
                                                 [&](const auto& n) { return readFormat(n); });
        const auto rules = readAll<std::map<std::string, std::string>>(
            child(root_, "cellStyleXfs"), [](const pugi::xml_node& node) {
                return attributesOf(node, {"applyNumberFormat", "applyFont", "applyFill",
                                           "applyBorder", "applyAlignment", "applyProtection"});
            });
        std::map<unsigned, int> places;
        for (const pugi::xml_node& node : child(root_, "cellStyles").children()) {
            CellStyle style;
            style.name = node.attribute("name").value();
            style.format = pick(formats, node.attribute("xfId"));
            style.rules = pick(rules, node.attribute("xfId"));
            style.settings = attributesOf(node, {"builtinId", "iLevel", "hidden", "customBuiltin"});
            const bool isNormal = node.attribute("builtinId").as_int(-1) == 0;
            places.emplace(node.attribute("xfId").as_uint(),
                           isNormal ? 0 : static_cast<int>(styles.size()));
            if (isNormal)
                styles.front() = std::move(style);
            else
                styles.push_back(std::move(style));
        }
        return places;
    }

    [[nodiscard]] CellFormat readFormat(const pugi::xml_node& node) const {
        CellFormat format;
        const int number = node.attribute("numFmtId").as_int();
        const auto code = codes_.find(number);
        format.numberFormat = code != codes_.end() ? code->second : builtInNumberFormat(number);
        format.font = pick(fonts_, node.attribute("fontId"));
        format.fill = pick(fills_, node.attribute("fillId"));
        format.borders = pick(borders_, node.attribute("borderId"));
        format.alignment = readAlignment(child(node, "alignment"));
        const pugi::xml_node protection = child(node, "protection");
        format.locked = protection.attribute("locked").as_bool(true);
        format.formulaHidden = protection.attribute("hidden").as_bool(false);
        return format;
    }

    pugi::xml_node root_;
    std::map<int, std::string> codes_;
    std::vector<Font> fonts_;
    std::vector<Fill> fills_;
    std::vector<Borders> borders_;
};

} // namespace

ColorReader::ColorReader(const pugi::xml_document& theme, const pugi::xml_document& styles)
    : palette_(kOldPalette.begin(), kOldPalette.end()) {
    std::size_t index = 0;
    const pugi::xml_node own = child(child(styles.document_element(), "colors"), "indexedColors");
    for (const pugi::xml_node& entry : own.children())
        if (index < palette_.size()) palette_[index++] = parseHex(entry.attribute("rgb").value());
    const pugi::xml_node scheme =
        child(child(theme.document_element(), "themeElements"), "clrScheme");
    for (const pugi::xml_node& entry : scheme.children()) {
        const pugi::xml_node value = entry.first_child();
        const bool system = localName(value.name()) == "sysClr";
        theme_.push_back(parseHex(value.attribute(system ? "lastClr" : "val").value()));
    }
    // Cells count light before dark, the theme dark before light.
    constexpr std::size_t kPairs = 4;
    if (theme_.size() >= kPairs) {
        std::swap(theme_[0], theme_[1]);
        std::swap(theme_[2], theme_[3]);
    }
}

Color ColorReader::read(const pugi::xml_node& node) const {
    std::uint32_t rgb = 0;
    if (const auto value = node.attribute("rgb")) {
        rgb = parseHex(value.value());
    } else if (const auto theme = node.attribute("theme")) {
        const auto index = static_cast<std::size_t>(theme.as_uint());
        // The dark text colour of the theme, untinted, is what automatic shows.
        constexpr std::size_t kText = 1;
        if (index >= theme_.size() || (index == kText && !node.attribute("tint"))) {
            return std::nullopt;
        }
        rgb = theme_[index];
    } else if (const auto indexed = node.attribute("indexed")) {
        const auto index = static_cast<std::size_t>(indexed.as_uint());
        if (index >= palette_.size()) return std::nullopt;
        rgb = palette_[index];
    } else {
        return std::nullopt;
    }
    const double tint = node.attribute("tint").as_double();
    return swappedColor(tint == 0.0 ? rgb : tinted(rgb, tint));
}

std::vector<FormatId> readStyles(const pugi::xml_document& styles, const ColorReader& colors,
                                 Workbook& book) {
    return StyleReader(styles.document_element(), colors).read(book);
}

} // namespace headless::excel
