// Forwards to the host.
#pragma once
#include "afxwin.h"
#include "ed/application_object.h"
#include "ed/coordinate_calls.h"
