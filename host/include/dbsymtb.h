// Forwards to the host.
#pragma once
#include "db/block_table.h"
#include "db/dim_style_table.h"
#include "db/layer_table.h"
#include "db/linetype_table.h"
#include "db/regapp_table.h"
#include "db/text_style_table.h"
#include "db/view_tables.h"
