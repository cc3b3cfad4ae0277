// Automation's strings.
#pragma once

#include "win/bstr.h"
