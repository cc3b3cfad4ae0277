// The viewports of a drawing, and the one that is looked at.
//
// With tilemode on these are the tiles of model space, numbered from 2; with tilemode off the sheet
// itself, number 1, and the viewports that float on it, numbered from 2. Their views live in the
// drawing: in the records *Active of its viewport table and in the viewports of its sheets.
#pragma once

#include <vector>

#include "db/database.h"
#include "db/view.h"

class AcDbViewport;
class AcDbViewportTableRecord;

namespace headless {

constexpr short kSheetNumber = 1;
constexpr short kFirstViewport = 2;

/// The paper space that is shown when tilemode is off: the block *Paper_Space. Other sheets have
/// numbers behind that name.
[[nodiscard]] AcDbObjectId currentSheet(const AcDbDatabase& db);
/// The viewport that keeps how a sheet is seen; null when it has none yet.
[[nodiscard]] AcDbObjectId sheetViewport(AcDbObjectId sheet);

struct NumberedViewport {
    short number;
    AcDbObjectId id;
};
/// The viewports that model space is seen through: tiles, or those floating on the sheet. Numbers
/// of floating ones are those of the file where it gives them.
[[nodiscard]] std::vector<NumberedViewport> modelViewports(const AcDbDatabase& db);
/// The one of that number; null when there is none.
[[nodiscard]] AcDbObjectId modelViewport(const AcDbDatabase& db, short number);

/// The tile that is current; null only in a drawing without any.
[[nodiscard]] const AcDbViewportTableRecord* currentTile(const AcDbDatabase& db);
/// The floating viewport through which model space is edited; null with tilemode on and when the
/// sheet itself is current.
[[nodiscard]] const AcDbViewport* currentFloating(const AcDbDatabase& db);
/// True when the sheet itself is current: points then are points of paper space.
[[nodiscard]] bool isSheetCurrent(const AcDbDatabase& db);

/// CVPORT.
[[nodiscard]] short currentViewport(const AcDbDatabase& db);
/// False for a number that no viewport has, and for one that is switched off.
bool setCurrentViewport(AcDbDatabase& db, short number);

/// Turns tilemode on, or off to show a sheet, which gets the name of the one shown before; a null
/// sheet is that one.
void showModel(AcDbDatabase& db);
void showSheet(AcDbDatabase& db, AcDbObjectId sheet = {});

/// What the current viewport shows, and the view of a sheet.
[[nodiscard]] View currentView(const AcDbDatabase& db);
[[nodiscard]] View sheetView(const AcDbDatabase& db);
/// Statuses of opening the record or the viewport, which may be open.
Acad::ErrorStatus setCurrentView(AcDbDatabase& db, const View& view);

} // namespace headless
