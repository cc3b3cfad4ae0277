// JSON as all subcommands print it: UTF-8, numbers with full double precision.
#pragma once

#include <optional>
#include <ostream>

#include <json/json.h>

namespace orn {

void printJson(std::ostream& out, const Json::Value& value);

/// The number, or null when there is none (or it is none, as NaN).
Json::Value numberOrNull(const std::optional<double>& number);

} // namespace orn
