// Picking one entity inside whatever shows it.
#pragma once

#include "db/resbuf.h"

/// Asks as acedEntSel does, and looks into references and dimensions, at any depth.
///
/// @param entity      gets the name of the entity picked: one in a block, an attribute of a
///                    reference, or of an old polyline the vertex that the segment begins with.
/// @param point       gets the point, in user coordinates.
/// @param toWorld     gets the transform from the coordinates of the entity's block to the world's:
///                    what the three axes become, then the place of the origin. The identity for
///                    what stands in no block.
/// @param containers  gets a chain of the names (RTENAME) of the references that show the entity,
///                    the innermost first, which the caller frees with acutRelRb; null for none.
/// @return            as acedEntSel; the last two are set for RTNORM only.
int acedNEntSel(const ACHAR* prompt, ads_name entity, ads_point point, ads_point toWorld[4],
                resbuf** containers);

/// The same with the transform as a matrix: a point of the block as a column goes behind it.
///
/// @param pointGiven  not 0: nobody is asked, and `point` says where to look.
int acedNEntSelP(const ACHAR* prompt, ads_name entity, ads_point point, int pointGiven,
                 ads_matrix toWorld, resbuf** containers);
