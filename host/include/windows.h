// Win32's basic types and calls.
#pragma once

#include "win/bstr.h"
#include "win/casing.h"
#include "win/code_page_calls.h"
#include "win/constants.h"
#include "win/crt.h"
#include "win/last_error.h"
#include "win/module_calls.h"
#include "win/private_profile.h"
#include "win/types.h"
#include "win/user.h"
