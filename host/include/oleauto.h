// Automation: strings, variants, arrays, late-bound objects and their servers.
#pragma once

#include "win/bstr.h"
#include "win/class_objects.h"
#include "win/dispatch.h"
#include "win/safe_array.h"
#include "win/unknown.h"
#include "win/variant.h"
