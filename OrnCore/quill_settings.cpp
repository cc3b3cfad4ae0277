#include "OrnCore/quill_settings.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>

#include <json/reader.h>
#include <json/value.h>

#include "OrnCore/utf8_text.h"

namespace quill {
namespace {

constexpr std::array kLineWeights = {-3, 0,  5,  9,  13, 15,  18,  20,  25,  30,  35,  40, 50,
                                     53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

/// One object of an array, and its place for messages.
class Entry {
public:
    Entry(const Json::Value& object, std::string place)
        : object_(object), place_(std::move(place)) {
        if (!object.isObject()) throw std::runtime_error(place_ + ": not an object");
    }

    [[noreturn]] void refuse(const std::string& key, const std::string& what) const {
        throw std::runtime_error(place_ + "." + key + ": " + what);
    }

    CString text(const char* key) const {
        if (!has(key) || !object_[key].isString() || object_[key].asString().empty())
            refuse(key, "not a text, or empty");
        return orncore::fromUtf8(object_[key].asString());
    }
    CString text(const char* key, const CString& otherwise) const {
        return has(key) ? text(key) : otherwise;
    }

    int whole(const char* key, int least, int greatest) const {
        if (!has(key) || !object_[key].isInt() || object_[key].asInt() < least ||
            object_[key].asInt() > greatest)
            refuse(key, "not a whole number from " + std::to_string(least) + " to " +
                            std::to_string(greatest));
        return object_[key].asInt();
    }
    int whole(const char* key, int least, int greatest, int otherwise) const {
        return has(key) ? whole(key, least, greatest) : otherwise;
    }
    unsigned int code(const char* key) const {
        return static_cast<unsigned int>(whole(key, 0, INT_MAX));
    }

    /// A number above 0.
    double length(const char* key, double otherwise) const {
        if (!has(key)) return otherwise;
        if (!object_[key].isDouble() || object_[key].asDouble() <= 0.0)
            refuse(key, "not a number above 0");
        return object_[key].asDouble();
    }

    std::vector<double> numbers(const char* key) const {
        std::vector<double> values;
        if (!has(key) || !object_[key].isArray()) refuse(key, "not an array of numbers");
        for (const Json::Value& value : object_[key]) {
            if (!value.isDouble()) refuse(key, "not an array of numbers");
            values.push_back(value.asDouble());
        }
        return values;
    }

    bool flag(const char* key, bool otherwise) const {
        if (!has(key)) return otherwise;
        if (!object_[key].isBool()) refuse(key, "neither true nor false");
        return object_[key].asBool();
    }

private:
    bool has(const char* key) const { return object_.isMember(key); }

    const Json::Value& object_;
    std::string place_;
};

/// Fills a map from an array's entries, each of which gives its key and its value.
template <class Map, class Convert>
void readArray(const Json::Value& document, const char* name, const char* keyName, Map& map,
               Convert convert) {
    if (!document.isMember(name)) return;
    const Json::Value& array = document[name];
    if (!array.isArray()) throw std::runtime_error(std::string(name) + ": not an array");
    for (Json::ArrayIndex i = 0; i < array.size(); ++i) {
        const Entry entry(array[i], std::string(name) + "[" + std::to_string(i) + "]");
        if (!map.insert(convert(entry)).second) entry.refuse(keyName, "taken by an earlier entry");
    }
}

std::pair<CString, Linetype> linetypeOf(const Entry& entry) {
    return {entry.text("name"), {entry.text("description", L""), entry.numbers("dashes")}};
}

std::pair<unsigned int, Layer> layerOf(const Entry& entry) {
    Layer layer;
    layer.name = entry.text("name");
    layer.color = entry.whole("color", 1, 255, layer.color);
    layer.linetype = entry.text("linetype", layer.linetype);
    layer.lineWeight = entry.whole("lineweight", -3, 211, layer.lineWeight);
    if (std::ranges::find(kLineWeights, layer.lineWeight) == kLineWeights.end())
        entry.refuse("lineweight", "not a weight that lines can have");
    layer.plots = entry.flag("plot", layer.plots);
    return {entry.code("code"), layer};
}

std::pair<unsigned int, TextStyle> textStyleOf(const Entry& entry) {
    return {entry.code("code"),
            {entry.text("name"), entry.text("font"), entry.text("bigFont", L""),
             entry.length("widthFactor", 1.0)}};
}

std::pair<DimensionKey, DimensionStyle> dimensionStyleOf(const Entry& entry) {
    const DimensionStyle usual;
    const DimensionKey key{entry.whole("first", 0, INT_MAX), entry.whole("second", 0, INT_MAX),
                           entry.whole("third", 0, INT_MAX)};
    return {key,
            {.textStyle = entry.code("textStyle"),
             .scale = entry.length("scale", usual.scale),
             .textHeight = entry.length("textHeight", usual.textHeight),
             .tick = entry.length("tick", usual.tick),
             .originGap = entry.length("originGap", usual.originGap),
             .beyond = entry.length("beyond", usual.beyond),
             .textGap = entry.length("textGap", usual.textGap),
             .spacing = entry.length("spacing", usual.spacing),
             .decimals = entry.whole("decimals", 0, 8, usual.decimals)}};
}

Json::Value parsed(std::string_view text) {
    Json::CharReaderBuilder settings;
    Json::CharReaderBuilder::strictMode(&settings.settings_);
    const std::unique_ptr<Json::CharReader> reader(settings.newCharReader());
    Json::Value document;
    std::string errors;
    if (!reader->parse(text.data(), text.data() + text.size(), &document, &errors)) {
        std::ranges::replace(errors, '\n', ' ');
        throw std::runtime_error(errors);
    }
    if (!document.isObject()) throw std::runtime_error("not an object");
    return document;
}

Settings settingsOf(const std::string& bytes) {
    if (!orncore::isUtf8(bytes)) throw std::runtime_error("not in UTF-8");
    std::string_view text = bytes;
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    const Json::Value document = parsed(text);
    Settings settings;
    readArray(document, "linetypes", "name", settings.linetypes, linetypeOf);
    readArray(document, "layers", "code", settings.layers, layerOf);
    readArray(document, "textStyles", "code", settings.textStyles, textStyleOf);
    readArray(document, "dimensionStyles", "first", settings.dimensionStyles, dimensionStyleOf);
    return settings;
}

} // namespace

Reading readSettings(const std::string& document) {
    try {
        return {settingsOf(document), std::nullopt};
    } catch (const std::exception& failure) {
        return {{}, orncore::fromUtf8(failure.what())};
    }
}

} // namespace quill
