#include "layerpick/pick_layers.h"

#include <cmath>
#include <optional>
#include <set>

#include <aced.h>
#include <axlock.h>
#include <dbents.h>
#include <dbhatch.h>
#include <dbpl.h>
#include <geassign.h>

#include "OrnCore/zel_dwg.h"
#include "frame/ac_ut_sym_tbl.h"
#include "frame/auto_open_lock_layer.h"
#include "frame/object_handle.h"
#include "interact/hook_use_tool.h"
#include "layerpick/layer_highlight.h"
#include "layerpick/layer_of.h"
#include "layerpick/layer_sets.h"
#include "layerpick/pick_layer.h"
#include "text/string_list.h"

namespace {

/// Layer names in one text, as callers hand them over.
class LayerList {
public:
    explicit LayerList(const CString& joined) : joined_(joined) {}

    const CString& joined() const { return joined_; }
    std::vector<CString> names() const { return kelmor::splitLongString(joined_, L",", 0, 0); }
    bool has(const CString& layer) const {
        return kelmor::IsStrInVecString(layer, names(), 0) != 0;
    }
    void add(const CString& layer) { joined_ += joined_.IsEmpty() ? layer : L"," + layer; }
    /// The layer in any case.
    void remove(const CString& layer) {
        std::vector<CString> kept = names();
        std::vector<CString> same = kept;
        std::erase_if(same, [&](const CString& name) { return name.CompareNoCase(layer) != 0; });
        kelmor::DelStrByVecStr(kept, same, 0);
        joined_ = kelmor::SplicingString(kept, L",", 1);
    }

private:
    CString joined_;
};

struct Picked {
    AcDbObjectId entity;
    CString layer; // empty: none
};

/// Shows the drawing's changes when it begins and when it ends.
struct DisplayUpdates {
    DisplayUpdates() { CZelDwg::UpdateDisplay(); }
    ~DisplayUpdates() { CZelDwg::UpdateDisplay(); }
    DisplayUpdates(const DisplayUpdates&) = delete;
    DisplayUpdates& operator=(const DisplayUpdates&) = delete;
};

/// One round of picks from the first prompt to the end. What it changes for the time is undone in
/// the opposite order: highlight and copies, locks, display, filter, the document's lock.
class LayerPicking {
public:
    LayerPicking(const CString& prompt, const CString& layers, int descend, int pickMode)
        : prompt_(prompt), descend_(descend), pickMode_(pickMode), list_(layers) {
        kelmor::GetAllHideLayerByDwg(hidden_, nullptr);
        highlight_.show(list_.names());
    }

    /// The next pick of an entity that shows a layer; nothing when the user ends it.
    std::optional<Picked> next() {
        for (;;) {
            CHookUseTool::m_bMouseLeftDown = 0;
            ads_name name;
            ads_point at;
            const int answer = acedEntSel(prompt_, name, at);
            if (answer == RTNORM) {
                if (const auto picked = resolve(name, asPnt3d(at))) return picked;
            } else if (answer != RTERROR || CHookUseTool::m_bMouseLeftDown == 0) {
                cancelled_ = answer == RTCAN;
                return std::nullopt;
            } // else a click on nothing, which is no end
        }
    }

    /// Adds the layer, or takes it out when it is chosen and Shift is held. True when it was added.
    bool take(const CString& layer) {
        if (list_.has(layer)) {
            if (CHookUseTool::m_bShiftDown != 0) {
                list_.remove(layer);
                highlight_.hide(layer);
            }
            return false;
        }
        list_.add(layer);
        highlight_.show(layer);
        added_ = true;
        return true;
    }

    bool hasChoice() const { return added_ && !cancelled_; }
    const CString& layers() const { return list_.joined(); }

private:
    std::optional<Picked> resolve(const ads_name name, const AcGePoint3d& at) const {
        AcDbObjectId id;
        if (acdbGetObjectId(id, name) != Acad::eOk) return std::nullopt;
        const ReadHandle<AcDbEntity> entity(id);
        if (!entity) return std::nullopt;
        const CString layer = layerAt(*entity, at);
        return layer.IsEmpty() ? std::nullopt : std::optional(Picked{id, layer});
    }

    CString layerAt(const AcDbEntity& entity, const AcGePoint3d& at) const {
        constexpr int kHatches = 1;
        if (descend_ != 0 && AcDbBlockReference::cast(&entity) != nullptr)
            return kelmor::GetBlockInsideLayerByPt(&entity, at, hidden_, pickMode_, kHatches);
        CString layer;
        if (AcDbHatch::cast(&entity) != nullptr)
            layer = kelmor::GetEntLayerByPt(at, hidden_, descend_, pickMode_, kHatches);
        return layer.IsEmpty() ? layerpick::layerOf(entity) : layer;
    }

    const CString& prompt_;
    int descend_;
    int pickMode_;
    LayerList list_;
    bool added_ = false;
    bool cancelled_ = false;

    AcAxDocLock lock_;
    CHookUseTool hook_;
    DisplayUpdates display_;
    AutoOpenLockLayer unlocked_;
    std::set<CString> hidden_;
    layerpick::LayerHighlight highlight_;
};

/// What callers ask of a picked entity.
struct Look {
    int color = 0;
    CString linetype;
    double linetypeScale = 1.0;
    std::optional<int> width;
};

std::optional<Look> lookOf(AcDbObjectId id) {
    const ReadHandle<AcDbEntity> entity(id);
    if (!entity) return std::nullopt;
    Look look{entity->colorIndex(), AcUtSymTbl::GetStyleName(entity->linetypeId()),
              entity->linetypeScale(), std::nullopt};
    double width = 0.0;
    const auto* const polyline = AcDbPolyline::cast(entity.get());
    if (polyline != nullptr && polyline->getConstantWidth(width) == Acad::eOk)
        look.width = static_cast<int>(std::lround(width));
    return look;
}

} // namespace

int kelmor::PickLayerByDwg(const CString& prompt, CString& layers, int descend, int pickMode) {
    LayerPicking picking(prompt, layers, descend, pickMode);
    while (const auto picked = picking.next())
        picking.take(picked->layer);
    if (!picking.hasChoice()) return 0;
    layers = picking.layers();
    return 1;
}

int kelmor::PickOneEntLayerByDwg(const CString& prompt, CString& layers, int descend,
                                 int pickMode) {
    LayerPicking picking(prompt, layers, descend, pickMode);
    const auto picked = picking.next();
    if (!picked) return 0;
    layers = picked->layer;
    return 1;
}

int kelmor::PickLayerByDwg(const CString& prompt, CString& layers, int descend, int& color,
                           CString& linetype, double& linetypeScale, int& width, int pickMode) {
    LayerPicking picking(prompt, layers, descend, pickMode);
    std::optional<Look> last;
    while (const auto picked = picking.next())
        if (picking.take(picked->layer)) last = lookOf(picked->entity);
    if (!picking.hasChoice()) return 0;
    layers = picking.layers();
    if (last) {
        color = last->color;
        linetype = last->linetype;
        linetypeScale = last->linetypeScale;
        width = last->width.value_or(width);
    }
    return 1;
}
