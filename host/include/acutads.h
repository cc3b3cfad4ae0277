// Forwards to the host.
#pragma once
#include "db/resbuf.h"
#include "ed/command_line.h"
#include "ed/measures.h"
#include "ed/wildcard.h"
