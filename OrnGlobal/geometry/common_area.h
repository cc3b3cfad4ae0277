// Quantities of boards: areas of outlines on layers, and numbers as texts.
//
// Drawings are in millimetres. An id that cannot be opened or is of another kind counts as 0,
// silently.
#pragma once

#include <vector>

#include <afxwin.h>
#include <dbidar.h>

namespace Common {

/// Area of a closed polyline in square metres; 0 when it is open by more than rounding to three
/// decimals, or when its sides do not pass the bounds.
///
/// Side A is the first side of the outline's outer tangents (LineTools::GetPlineOutTangant), side B
/// the second, both in drawing units. A side passes when it is longer than its lower bound and not
/// longer than its upper; sides below 1 do not pass. No bounds apply when both pairs are
/// (0, 2147483647).
AFX_EXT_API double GetPlineArea(const AcDbObjectId& id, double minB, double maxB, double minA,
                                double maxA);

/// Sum over the polylines and circles on the layers, with bounds for side B of the polylines.
/// Polylines count in square metres, circles in square drawing units: callers rely on it.
/// @param layers  names joined by ",", compared with the entities' names in upper case.
AFX_EXT_API double GetAllPlineArea(const AcDbObjectIdArray& ids, const CString& layers, double minB,
                                   double maxB);
/// The same sum with bounds for both sides, in square millimetres when the unit is "毫米（mm）" and
/// in square metres otherwise, circles as well.
AFX_EXT_API double GetAllPlineArea(const AcDbObjectIdArray& ids, const CString& layers,
                                   const CString& unit, double minB, double maxB, double minA,
                                   double maxA);

/// A length in millimetres as text in a unit: millimetres, centimetres or decimetres when `unit`
/// contains "毫米", "厘米" or "分米", else metres.
/// @param precision  "0" for a whole number, halves upwards; else a pattern such as "0.00", whose
///                   length less 2 is the count of decimals.
AFX_EXT_API CString GetDecimalText(double value, CString precision, CString unit);

/// Standard deviation of the population over the mean, in percent; 0 for a mean of 0 and not a
/// number without values.
AFX_EXT_API double CalculateCoefficientOgVaration(const std::vector<double>& values);

/// Colour of the working database's current layer; 256 (by layer) when it cannot be opened.
AFX_EXT_API int GetCurLayerColorIndex();

} // namespace Common
