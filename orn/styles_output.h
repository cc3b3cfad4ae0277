// Component styles as JSON for programs.
#pragma once

#include <ostream>

#include "OrnBoard/styles.h"

namespace orn {

/// Keys `source`, "drawing" or "defaults", and `styles`: an array of `groupName`, `typeName`,
/// `styleName` and the members that a styles file has, with the same spelling.
void printJson(std::ostream& out, const board::StyleList& list);

} // namespace orn
