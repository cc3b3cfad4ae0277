#include "json_output.h"

#include <cmath>
#include <memory>

namespace orn {

void printJson(std::ostream& out, const Json::Value& value) {
    Json::StreamWriterBuilder settings;
    settings["indentation"] = " ";
    settings["emitUTF8"] = true;
    settings["precision"] = 17;
    const std::unique_ptr<Json::StreamWriter> writer(settings.newStreamWriter());
    writer->write(value, &out);
    out << '\n';
}

Json::Value numberOrNull(const std::optional<double>& number) {
    return number && std::isfinite(*number) ? Json::Value(*number) : Json::Value();
}

} // namespace orn
