// The automation server "Excel.Application".
#pragma once

#include <memory>

#include "excel/engine.h"
#include "win/class_objects.h"

namespace headless::excel {

/// Installs the application: each object made is a running application of its own.
/// @param engine  does the work; shared by all of them.
void install(AutomationServers& servers, std::shared_ptr<Engine> engine = chosenEngine());
/// As on a machine without it.
void uninstall(AutomationServers& servers);

} // namespace headless::excel
