// An inventory of a drawing as tables for people and as JSON for programs.
#pragma once

#include <ostream>

#include "drawing_info.h"

namespace orn {

void printTable(std::ostream& out, const DrawingInfo& info);

/// Keys `version`, `entities`, `by_layer`, `paper_spaces`, `blocks`, `layers`, `linetypes`,
/// `text_styles`, `dim_styles`.
void printJson(std::ostream& out, const DrawingInfo& info);

void printTable(std::ostream& out, const std::vector<EntityInfo>& entities);

/// Key `entities`: an array of `handle`, `type`, `layer`, `extents`.
void printJson(std::ostream& out, const std::vector<EntityInfo>& entities);

} // namespace orn
