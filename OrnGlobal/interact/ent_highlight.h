// Entities that stay highlighted for as long as an operation wants them marked.
#pragma once

#include <set>

#include <afxwin.h>
#include <dbidar.h>

/// A set of entities, shown highlighted, those on locked layers too. Whatever refuses to be opened
/// is passed over in silence; it is in the set all the same.
///
/// Layers that had to be unlocked are locked again when the object ends, and not before.
class AFX_EXT_CLASS CEntHighlight {
public:
    CEntHighlight() = default;
    CEntHighlight(const CEntHighlight&) = default;
    CEntHighlight& operator=(const CEntHighlight&) = default;
    /// Unhighlights all and locks the layers again.
    virtual ~CEntHighlight();

    /// Nothing for a null id and for one that is in the set.
    void AddEnt(AcDbObjectId const& id);
    void AddEnt(AcDbObjectIdArray const& ids);
    /// Nothing for an id that is not in the set.
    void DelEnt(AcDbObjectId const& id);
    void DelEnt(AcDbObjectIdArray const& ids);
    void ClearEnts();

    /// 1 when the id is in the set.
    int isHaveId(AcDbObjectId const& id) const;
    /// 1 when the set is empty.
    int IsNull() const;
    /// In the order of ids.
    AcDbObjectIdArray GetAllEnt() const;

private:
    bool unlockLayerOf(AcDbObjectId entity);

    std::set<AcDbObjectId> highlighted_;
    std::set<AcDbObjectId> unlockedLayers_;
};
