// Automation's strings, values and objects.
#pragma once

#include "win/bstr.h"
#include "win/dispatch.h"
#include "win/unknown.h"
#include "win/variant.h"
