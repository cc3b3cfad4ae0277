// The platform's calls that go from one coordinate system to another.
#pragma once

#include "db/resbuf.h"
#include "db/view_tables.h"
#include "db/viewport.h"
#include "mfc/point.h"

/// Translates a point, or a displacement, from one coordinate system to another.
///
/// @param from, to  RTSHORT 0 world, 1 user, 2 display of the current viewport, 3 display of paper
///                  space (only from or to 2, while a floating viewport is current); RTENAME the
///                  object coordinate system of an entity; RT3DPOINT that of an extrusion.
/// @param disp      not 0: a displacement, which is turned and scaled but not moved. It is seen as
///                  if the view had no perspective.
/// @param result    may be `pt`.
/// @return          RTNORM; RTERROR, leaving `result`, for systems that do not exist and for points
///                  that a perspective view cannot show.
int acedTrans(const ads_point pt, const resbuf* from, const resbuf* to, int disp, ads_point result);

/// Makes a named view, or one that is in no drawing, the view of a viewport.
///
/// The view's whole width and height will be seen. eInvalidInput without a view or with one that
/// has no height or direction, and for a view of paper space where model space is seen or the other
/// way round.
/// @param viewport  open for writing; null: the current viewport.
Acad::ErrorStatus acedSetCurrentView(AcDbViewTableRecord* view, AcDbViewport* viewport);

using acedDwgPoint = double[3];

/// The number of the viewport under a pixel of the drawing area; 0 outside of all.
int acedGetWinNum(int x, int y);

/// The point of the world that a click on the pixel means, see headless::pixelToWorld; FALSE when
/// there is no viewport of that number.
BOOL acedCoordFromPixelToWorld(int viewport, CPoint pixel, acedDwgPoint point);
/// The same in the viewport under the pixel, whose number it returns; 0 outside of all.
int acedCoordFromPixelToWorld(const CPoint& pixel, acedDwgPoint point);
/// The pixel nearest to where a viewport shows the point; FALSE when it does not exist or cannot
/// show the point.
BOOL acedCoordFromWorldToPixel(int viewport, const acedDwgPoint point, CPoint& pixel);
