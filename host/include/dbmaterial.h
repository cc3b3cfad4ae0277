// Forwards to the host.
#pragma once
#include "db/material.h"
