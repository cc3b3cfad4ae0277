// The platform's calls about selection sets.
//
// A set is named by an ads_name that the program frees with acedSSFree; at most 128 are open at a
// time. Entities are selected from model space and the sheets, never from blocks.
#pragma once

#include "db/resbuf.h"

/// Selects entities.
///
/// @param mode    "X" all that the filter takes, wherever they are; "A" the same without those that
///                no user could select: on layers that are off, frozen, locked or hidden, and
///                invisible ones; "L" the last one of the current space that a user could select;
///                "P" what was selected last; "I" what was selected before the command began. In
///                any case, an underscore may stand before it. By place, from the current space:
///                "W" and "C" what lies inside a box and what crosses it, too; "WP" and "CP" the
///                same of a polygon; "F" what a chain of lines crosses; null or empty the newest
///                that the pick box at a point crosses. Null or empty without a point, and ":" with
///                letters: the user chooses (see headless::chooseEntities); "S" the first choice
///                ends it, "L" without entities on locked layers, "$" with the prompts that
///                `point1` points to, one for adding and one for removing.
/// @param point1, point2  user coordinates: two corners or one point as ads_point; for polygons and
///                chains `point1` is a chain of buffers with points.
/// @param filter  which of them, see EntityFilter; null for all.
/// @param set     gets the set's name. The newest entity comes first.
/// @return        RTNORM; RTERROR, without a set, when nothing was selected, for another mode, for
///                a malformed filter and when 128 sets are open; RTCAN when the user cancels.
int acedSSGet(const ACHAR* mode, const void* point1, const void* point2, const resbuf* filter,
              ads_name set);

/// RTERROR for what is no set; so the next.
int acedSSFree(const ads_name set);
int acedSSLength(const ads_name set, Adesk::Int32* length);
/// The name of an entity of the set, counted from 0; RTERROR beyond the last.
int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity);
/// Tells how entities of a set were selected, in a chain that the caller frees with acutRelRb.
///
/// An entity is told by a number (RTSHORT: 0 without a place, 1 picked, 2 within a window or
/// polygon, 3 crossed by one, 4 by a fence), its name (RTENAME), a marker (RTSHORT, always 0) and
/// what belongs to the number: where it was picked; which polygon it was (RTSHORT, from -1
/// downwards); all points where the fence seems to cross it. Then follow the polygons, each a list
/// of its number and its corners; windows are polygons. A point is a list of 0 (RTSHORT), its place
/// in the world (RT3DPOINT) and, unless it was seen straight from above, the direction to the eye
/// (RT3DPOINT). Lists stand between RTLB and RTLE.
/// @param index  of the entity, counted from 0; negative tells of all, each in a list.
/// @return       RTERROR, with null, for what is no set, beyond its last entity and for an empty
///               one.
int acedSSNameX(resbuf** result, const ads_name set, Adesk::Int32 index);
/// RTNORM when the entity is in the set.
int acedSSMemb(const ads_name entity, const ads_name set);
/// Adds an entity to a set; to a new one when `set` is null, which stays empty without an entity.
/// @param result  gets the name of the set; may be `set`.
int acedSSAdd(const ads_name entity, const ads_name set, ads_name result);
/// RTERROR when the entity is not in the set.
int acedSSDel(const ads_name entity, const ads_name set);

/// Makes the entities of a set those that a command finds selected; null for none.
/// @param grips  not shown: there is no window.
int acedSSSetFirst(const ads_name grips, const ads_name set);
