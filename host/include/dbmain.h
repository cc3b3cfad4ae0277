// Forwards to the host.
#pragma once
#include "db/database.h"
#include "db/entity.h"
#include "db/id_array.h"
#include "db/object.h"
#include "db/object_data.h"
#include "db/open.h"
#include "db/resbuf.h"
#include "db/subentity_path.h"
