// JSON documents as texts of bytes in the system's code page. Inside the library only.
//
// The bytes stay as they are: a character of two bytes whose second is 0x5C is written with that
// byte doubled, like any backslash, and so it is read. No Unicode is assumed on the way.
#pragma once

#include <optional>
#include <string>

#include <json/value.h>

namespace component {

/// The document in the text; nothing when it is no JSON or nests deeper than the parser goes. Of
/// members with the same name the last stays.
[[nodiscard]] std::optional<Json::Value> parsed(const std::string& text);

/// The document on one line, without the line's end; members in the order of their names' bytes.
[[nodiscard]] std::string compactLine(const Json::Value& document);

/// A number as its document holds it: null for what the parser would refuse, and the whole file
/// with it.
[[nodiscard]] Json::Value numberValue(double number);

// A member's value as a field of a record. What is absent, and what the JSON library does not
// convert, gives the value of null: 0, false or no text.
[[nodiscard]] int intOf(const Json::Value* value);
[[nodiscard]] double doubleOf(const Json::Value* value);
[[nodiscard]] bool boolOf(const Json::Value* value);
[[nodiscard]] std::string textOf(const Json::Value* value);

} // namespace component
