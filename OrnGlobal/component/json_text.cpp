#include "component/json_text.h"

#include <cmath>

#include <json/reader.h>
#include <json/writer.h>

namespace component {

std::optional<Json::Value> parsed(const std::string& text) {
    Json::Reader reader;
    Json::Value document;
    constexpr bool kCollectComments = false;
    try {
        const char* const end = text.data() + text.size();
        if (reader.parse(text.data(), end, document, kCollectComments)) return document;
    } catch (const Json::Exception&) {
        // Too deep for the parser.
    }
    return std::nullopt;
}

std::string compactLine(const Json::Value& document) {
    Json::StreamWriterBuilder settings;
    settings["indentation"] = "";
    settings["commentStyle"] = "None";
    // Otherwise the writer takes the bytes for UTF-8 and escapes what it makes of them.
    settings["emitUTF8"] = true;
    return Json::writeString(settings, document);
}

Json::Value numberValue(double number) {
    return std::isfinite(number) ? Json::Value(number) : Json::Value();
}

int intOf(const Json::Value* value) {
    return value != nullptr && value->isConvertibleTo(Json::intValue) ? value->asInt() : 0;
}

double doubleOf(const Json::Value* value) {
    return value != nullptr && value->isConvertibleTo(Json::realValue) ? value->asDouble() : 0.0;
}

bool boolOf(const Json::Value* value) {
    return value != nullptr && value->isConvertibleTo(Json::booleanValue) && value->asBool();
}

std::string textOf(const Json::Value* value) {
    const bool isText = value != nullptr && value->isConvertibleTo(Json::stringValue);
    return isText ? value->asString() : std::string();
}

} // namespace component
