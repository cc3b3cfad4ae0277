// Angles and distances between points given as arrays of three numbers.
#pragma once

#include "db/resbuf.h"

/// The angle of the line from `from` to `to`, seen along z: in [0, 2 pi), counter-clockwise from
/// the x axis; 0 for coincident points.
ads_real acutAngle(const ads_point from, const ads_point to);

/// The distance in space.
ads_real acutDistance(const ads_point from, const ads_point to);

/// The point at the angle (radians) and distance from `from`, at its height.
void acutPolar(const ads_point from, ads_real angle, ads_real distance, ads_point result);
