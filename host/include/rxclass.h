// Forwards to the host.
#pragma once
#include "rx/class_dictionary.h"
