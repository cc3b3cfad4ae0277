// Changing what is seen, with a way back.
#pragma once

#include <optional>
#include <vector>

#include "db/database.h"
#include "db/view.h"

class AcDbViewTableRecord;
class AcDbViewport;

namespace headless {

/// The views that a document's viewports had before, the last one last.
class ViewHistory {
public:
    void remember(AcDbObjectId viewport, const View& view);
    /// Gives the viewport's last view and forgets it.
    std::optional<View> takeBack(AcDbObjectId viewport);

private:
    static constexpr std::size_t kMostOfViewport = 10;
    struct Entry {
        AcDbObjectId viewport;
        View view;
    };
    std::vector<Entry> entries_;
};

/// Shows another view in the current viewport, which `ZOOM Previous` takes back.
Acad::ErrorStatus changeView(AcDbDatabase& db, const View& view);
/// Takes the current viewport's last change of view back; false when there is none.
bool restorePreviousView(AcDbDatabase& db);

/// Shows the whole of a named view. eInvalidInput for one without height or direction.
Acad::ErrorStatus showInCurrent(AcDbDatabase& db, const AcDbViewTableRecord& record);
/// @param viewport  eNotOpenForWrite unless it is open for writing.
Acad::ErrorStatus showIn(AcDbViewport& viewport, const AcDbViewTableRecord& record);

} // namespace headless
