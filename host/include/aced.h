// Forwards to the host.
#pragma once
#include "db/resbuf.h"
#include "ed/command_line.h"
#include "ed/commands.h"
#include "ed/coordinate_calls.h"
#include "ed/display.h"
#include "ed/entity_selection.h"
#include "ed/nested_selection.h"
#include "ed/prompts.h"
#include "ed/selection.h"
#include "ed/system_variables.h"
#include "ed/user_coordinates.h"
