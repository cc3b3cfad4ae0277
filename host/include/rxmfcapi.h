// Forwards to the host.
#pragma once
#include "afxwin.h"
#include "ed/application_object.h"
#include "ed/coordinate_calls.h"
#include "ed/drawing_view.h"
#include "ed/message_filters.h"
