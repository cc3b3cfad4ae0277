// Forwards to the host.
#pragma once
#include "ed/documents.h"
