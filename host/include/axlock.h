// Forwards to the host.
#pragma once
#include "ed/document_lock.h"
