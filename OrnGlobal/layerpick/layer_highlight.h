// Layers of the drawing at hand that are shown highlighted, for the length of a scope.
#pragma once

#include <map>
#include <set>
#include <vector>

#include <afxwin.h>
#include <dbidar.h>

#include "interact/ent_highlight.h"
#include "layerpick/temporary_entities.h"

namespace layerpick {

/// Shows all entities of layers highlighted. For what block references show on them there are
/// copies of it in the drawing meanwhile. The end takes everything back.
class AFX_EXT_CLASS LayerHighlight {
public:
    /// Collects what the working database holds now.
    LayerHighlight();
    ~LayerHighlight();
    LayerHighlight(const LayerHighlight&) = delete;
    LayerHighlight& operator=(const LayerHighlight&) = delete;

    /// @param layers  names in any case; those that nothing is on change nothing.
    void show(const std::vector<CString>& layers);
    void show(const CString& layer) { show(std::vector<CString>{layer}); }
    void hide(const CString& layer);

private:
    void unmark(const AcDbObjectIdArray& ids);
    void makeParts(const std::vector<CString>& layers);
    std::vector<const AcDbObjectIdArray*> entitiesOf(const CString& layer) const;

    std::map<CString, AcDbObjectIdArray> byLayer_;
    AcDbObjectIdArray references_;
    std::set<CString> parted_; // Layers, in capitals, of which there are copies already.
    TemporaryEntities parts_;
    CEntHighlight highlight_; // Ends before the copies that it shows.
};

} // namespace layerpick
