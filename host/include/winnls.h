// Code pages and letter case.
#pragma once

#include "win/casing.h"
#include "win/code_page_calls.h"
