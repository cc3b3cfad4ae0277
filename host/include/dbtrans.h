// Forwards to the host.
#pragma once
#include "db/transaction_manager.h"
