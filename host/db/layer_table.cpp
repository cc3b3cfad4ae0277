#include "db/layer_table.h"

#include "db/database.h"
#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/line_weights.h"
#include "db/resbuf.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbLayerTableRecord, AcDbSymbolTableRecord, "LAYER")
ACRX_CONS_DEFINE_MEMBERS(AcDbLayerTable, AcDbSymbolTable, 0)

using headless::DrawingVersion;
using headless::DxfTag;

namespace {

/// The layer of dimensions' measuring points.
bool isDefpoints(std::wstring_view name) { return headless::equalNoCase(name, L"Defpoints"); }

constexpr int kWhite = 7;

/// Layers that programs make for themselves have names of this beginning.
bool isHiddenName(std::wstring_view name) {
    constexpr std::wstring_view kHidden = L"*ADSK_";
    return headless::equalNoCase(name.substr(0, kHidden.size()), kHidden);
}

} // namespace

AcDbLayerTableRecord::AcDbLayerTableRecord() { color_.setColorIndex(kWhite); }

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
    if (frozen && database() != nullptr && database()->clayer() == objectId())
        return Acad::eInvalidInput;
    return change(frozen_, frozen);
}

ACHAR* AcDbLayerTableRecord::description() const {
    return acutNewString(look(description_).c_str());
}

Acad::ErrorStatus AcDbLayerTableRecord::setDescription(const ACHAR* description) {
    return description == nullptr ? Acad::eInvalidInput : change(description_, description);
}

Acad::ErrorStatus AcDbLayerTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    hidden_ = isHiddenName(nameOf());
    // Files before 2000 do not state it: that layer never plots.
    plottable_ = !isDefpoints(nameOf());
    for (const DxfTag& tag : filer->subclass("AcDbLayerTableRecord"))
        readField(*filer, tag);
    return Acad::eOk;
}

void AcDbLayerTableRecord::readField(AcDbDxfFiler& filer, const DxfTag& tag) {
    switch (tag.code) {
    case 6:
        linetypeId_ = filer.symbolId(AcDbLinetypeTableRecord::desc(), tag);
        break;
    case 62:
        readColorIndex(filer, tag);
        break;
    case 70:
        frozen_ = (tag.integer() & 1) != 0;
        frozenInNewViewports_ = (tag.integer() & 2) != 0;
        locked_ = (tag.integer() & 4) != 0;
        break;
    case 290:
        plottable_ = tag.flag();
        break;
    case 347:
        materialId_ = filer.objectId(tag);
        break;
    case 370:
        if (headless::isLineWeight(tag.integer()))
            lineWeight_ = static_cast<AcDb::LineWeight>(tag.integer());
        else
            filer.report(tag, "no such lineweight; the default is taken");
        break;
    case 390:
        plotStyleId_ = filer.objectId(tag);
        break;
    case 420:
        color_.setColor(static_cast<Adesk::UInt32>(tag.integer() & 0xFFFFFF) |
                        Adesk::UInt32{AcCmEntityColor::kByColor} << 24);
        break;
    case 430:
        colorName_ = filer.text(tag);
        break;
    default:
        break;
    }
}

/// A negative number also says that the layer is off.
void AcDbLayerTableRecord::readColorIndex(AcDbDxfFiler& filer, const DxfTag& tag) {
    constexpr std::int64_t kMostColors = 255;
    const std::int64_t number = tag.integer();
    const std::int64_t index = number < 0 ? -number : number;
    off_ = number < 0;
    if (index < 1 || index > kMostColors)
        filer.report(tag, "no colour of a layer; taken as white");
    else if (!color_.isByColor())
        color_.setColorIndex(static_cast<int>(index));
}

Acad::ErrorStatus AcDbLayerTableRecord::subErase(bool erasing) {
    const AcDbDatabase* const db = database();
    if (erasing && (db->layerZero() == objectId() || db->clayer() == objectId()))
        return Acad::eCannotBeErasedByCaller;
    return AcDbSymbolTableRecord::subErase(erasing);
}

Acad::ErrorStatus AcDbLayerTable::getIncludingHidden(const ACHAR* name, AcDbObjectId& id,
                                                     bool getErased) const {
    return lookUp(name, id, getErased, true);
}

Acad::ErrorStatus AcDbLayerTable::getIncludingHidden(const ACHAR* name,
                                                     AcDbLayerTableRecord*& record,
                                                     AcDb::OpenMode mode, bool openErased) const {
    record = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = getIncludingHidden(name, id, openErased);
    return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
}

bool AcDbLayerTable::hasIncludingHidden(const ACHAR* name) const {
    AcDbObjectId id;
    return lookUp(name, id, false, true) == Acad::eOk;
}

bool AcDbLayerTable::isShown(const AcDbSymbolTableRecord& record) const {
    return !static_cast<const AcDbLayerTableRecord&>(record).isHiddenLayer();
}

Acad::ErrorStatus AcDbLayerTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSymbolTableRecord::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {2, 6, 62, 70, 290, 347, 370, 390, 420, 430};
    headless::DxfOutput& out = filer->output();
    beginFields(*filer, "AcDbLayerTableRecord", kCodes);
    out.flags(70, (frozen_ ? 1U : 0U) | (frozenInNewViewports_ ? 2U : 0U) | (locked_ ? 4U : 0U), 7);
    // Programs may give a layer the colour "by layer", which files have no layer of.
    constexpr int kMostColors = 255;
    const int nearest = color_.nearestIndex();
    const int index = nearest >= 1 && nearest <= kMostColors ? nearest : kWhite;
    out.integer(62, off_ ? -index : index);
    out.symbol(6, linetypeId_);
    if (out.since(DrawingVersion::k2000)) writePlotting(out);
    if (out.since(DrawingVersion::k2004)) writeColors(out);
    writeDescription(out);
    return Acad::eOk;
}

void AcDbLayerTableRecord::writePlotting(headless::DxfOutput& out) const {
    if (!plottable_ || isDefpoints(nameOf())) out.integer(290, plottable_ ? 1 : 0);
    out.integer(370, lineWeight_);
    if (!plotStyleId_.isNull()) out.handle(390, plotStyleId_);
    if (!materialId_.isNull() && out.since(DrawingVersion::k2007)) out.handle(347, materialId_);
}

// What layers got later than their record's groups were settled is data of applications.
void AcDbLayerTableRecord::writeColors(headless::DxfOutput& out) const {
    constexpr Adesk::UInt32 kPartsOfColor = 0xFFFFFF;
    if (color_.isByColor()) out.integer(420, color_.color() & kPartsOfColor);
    out.text(430, colorName_, L"");
    out.application(L"AcCmTransparency");
    if (!transparency_.isSolid()) out.integer(1071, transparency_.serializeOut());
}

void AcDbLayerTableRecord::writeDescription(headless::DxfOutput& out) const {
    out.application(L"AcAecLayerStandard");
    if (description_.empty()) return;
    out.text(1000, L""); // the standard that the layer is of
    out.text(1000, description_);
}

void AcDbLayerTableRecord::forEachReference(const headless::ReferenceVisitor& visit) {
    visit(linetypeId_, headless::ReferenceKind::kHardPointer);
    visit(materialId_, headless::ReferenceKind::kHardPointer);
    visit(plotStyleId_, headless::ReferenceKind::kHardPointer);
}
