// Layers and what can be done to all entities on one.
#pragma once

#include "db/color.h"
#include "db/symbol_table.h"

namespace headless {
class DrawingRoots;
class DxfOutput;
struct DxfTag;
} // namespace headless

class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord);

    AcDbLayerTableRecord();

    bool isOff() const { return look(off_); }
    void setIsOff(bool off) { change(off_, off); }
    bool isFrozen() const { return look(frozen_); }
    /// eInvalidInput: the database's current layer cannot be frozen.
    Acad::ErrorStatus setIsFrozen(bool frozen);
    bool isLocked() const { return look(locked_); }
    void setIsLocked(bool locked) { change(locked_, locked); }
    /// Hidden layers are passed over by plain lookups and iterators.
    bool isHidden() const { return look(hidden_); }
    Acad::ErrorStatus setIsHidden(bool hidden) { return change(hidden_, hidden); }
    bool isPlottable() const { return look(plottable_); }
    Acad::ErrorStatus setIsPlottable(bool plottable) { return change(plottable_, plottable); }
    /// Frozen in new viewports.
    bool VPDFLT() const { return look(frozenInNewViewports_); }
    void setVPDFLT(bool frozen) { change(frozenInNewViewports_, frozen); }
    bool isInUse() const { return look(inUse_); }

    AcCmColor color() const { return AcCmColor(look(color_)); }
    AcCmEntityColor entityColor() const { return look(color_); }
    void setColor(const AcCmColor& color) {
        change(color_, color.entityColor());
        colorName_.clear();
    }
    AcCmTransparency transparency() const { return look(transparency_); }
    Acad::ErrorStatus setTransparency(const AcCmTransparency& transparency) {
        return change(transparency_, transparency);
    }
    AcDbObjectId linetypeObjectId() const { return look(linetypeId_); }
    Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId id) { return change(linetypeId_, id); }
    AcDb::LineWeight lineWeight() const { return look(lineWeight_); }
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight) { return change(lineWeight_, weight); }
    AcDbObjectId materialId() const { return look(materialId_); }
    Acad::ErrorStatus setMaterialId(AcDbObjectId id) { return change(materialId_, id); }
    AcDbObjectId plotStyleNameId() const { return look(plotStyleId_); }
    Acad::ErrorStatus setPlotStyleName(AcDbObjectId id) { return change(plotStyleId_, id); }
    /// A copy of the description that the caller frees with acutDelString.
    ACHAR* description() const;
    Acad::ErrorStatus setDescription(const ACHAR* description);

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

    // The states whether or not the layer is open: every entity asks them.
    bool locksEntities() const { return locked_; }
    bool showsEntities() const { return !off_ && !frozen_; }
    bool isFrozenLayer() const { return frozen_; }
    bool isHiddenLayer() const { return hidden_; }
    const AcCmEntityColor& colorOf() const { return color_; }
    AcDbObjectId linetypeOf() const { return linetypeId_; }

protected:
    Acad::ErrorStatus subErase(bool erasing) override;

private:
    friend class headless::DrawingRoots;

    void readField(AcDbDxfFiler& filer, const headless::DxfTag& tag);
    void readColorIndex(AcDbDxfFiler& filer, const headless::DxfTag& tag);
    void writePlotting(headless::DxfOutput& out) const;
    void writeColors(headless::DxfOutput& out) const;
    void writeDescription(headless::DxfOutput& out) const;

    AcDbObjectId linetypeId_;
    AcDbObjectId materialId_;
    AcDbObjectId plotStyleId_;
    std::wstring description_;
    std::wstring colorName_; // in a colour book
    AcCmEntityColor color_;
    AcCmTransparency transparency_{AcCmTransparency::kByAlpha};
    AcDb::LineWeight lineWeight_ = AcDb::kLnWtByLwDefault;
    bool off_ = false;
    bool frozen_ = false;
    bool locked_ = false;
    bool hidden_ = false;
    bool plottable_ = true;
    bool frozenInNewViewports_ = false;
    bool inUse_ = false;
};

class AcDbLayerTableIterator : public headless::SymbolTableIteratorOf<AcDbLayerTableRecord> {
public:
    using SymbolTableIteratorOf::SymbolTableIteratorOf;

    /// True when fresh. Setting it before the first step starts anew.
    void setSkipHidden(bool skip = true) { setSkipsHidden(skip); }
    bool skipHidden() const { return skipsHidden(); }
};

class AcDbLayerTable
    : public headless::SymbolTableOf<AcDbLayerTableRecord, AcDbLayerTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTable);

    // getAt and has do not know hidden layers; these do.
    Acad::ErrorStatus getIncludingHidden(const ACHAR* name, AcDbObjectId& id,
                                         bool getErased = false) const;
    Acad::ErrorStatus getIncludingHidden(const ACHAR* name, AcDbLayerTableRecord*& record,
                                         AcDb::OpenMode mode, bool openErased = false) const;
    bool hasIncludingHidden(const ACHAR* name) const;

protected:
    bool isShown(const AcDbSymbolTableRecord& record) const override;
};
