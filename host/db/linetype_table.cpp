#include "db/linetype_table.h"

#include "db/database.h"
#include "db/dxf_filer.h"
#include "db/resbuf.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, "LTYPE")
ACRX_CONS_DEFINE_MEMBERS(AcDbLinetypeTable, AcDbSymbolTable, 0)

Acad::ErrorStatus AcDbLinetypeTableRecord::comments(ACHAR*& comments) const {
    comments = acutNewString(look(comments_).c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const ACHAR* comments) {
    return comments == nullptr ? Acad::eInvalidInput : change(comments_, comments);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setNumDashes(int count) {
    if (count < 0) return Acad::eInvalidInput;
    assertWriteEnabled();
    dashes_.resize(static_cast<std::size_t>(count));
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
    return index >= 0 && index < numDashes() ? dashes_[static_cast<std::size_t>(index)] : 0.0;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double length) {
    if (index < 0 || index >= numDashes()) return Acad::eInvalidIndex;
    return change(dashes_[static_cast<std::size_t>(index)], length);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    constexpr int kScaledToFit = 'S'; // 'A' otherwise
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    for (const headless::DxfTag& tag : filer->subclass("AcDbLinetypeTableRecord")) {
        switch (tag.code) {
        case 3:
            comments_ = filer->text(tag);
            break;
        case 40:
            patternLength_ = tag.real();
            break;
        case 49:
            dashes_.push_back(tag.real());
            break;
        case 72:
            scaledToFit_ = tag.integer() == kScaledToFit;
            break;
        default:
            break;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::subErase(bool erasing) {
    const AcDbDatabase* const db = database();
    const AcDbObjectId id = objectId();
    if (erasing && (id == db->byLayerLinetype() || id == db->byBlockLinetype() ||
                    id == db->continuousLinetype()))
        return Acad::eCannotBeErasedByCaller;
    return AcDbSymbolTableRecord::subErase(erasing);
}
