// Picking one entity.
#pragma once

#include "db/resbuf.h"

/// Asks for an entity: a click or a typed point picks the newest one that the pick box crosses
/// there, "Last" the last one of the current space that a user could select.
///
/// @param prompt  null: "Select object: ".
/// @param entity  gets its name.
/// @param point   gets the point, in user coordinates, also when nothing lies there; LASTPOINT for
///                "Last".
/// @return        RTNORM; RTERROR with 7 in ERRNO when nothing was found, with 52 for Enter alone;
///                RTCAN for Escape, when there is no more input and without a drawing; RTKWORD for
///                a keyword that acedInitGet named.
int acedEntSel(const ACHAR* prompt, ads_name entity, ads_point point);
