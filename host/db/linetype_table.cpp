#include "db/linetype_table.h"

#include <numbers>

#include "db/database.h"
#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/resbuf.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, "LTYPE")
ACRX_CONS_DEFINE_MEMBERS(AcDbLinetypeTable, AcDbSymbolTable, 0)

namespace {

constexpr int kScaledToFit = 'S';
constexpr int kAligned = 'A';

} // namespace

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

double AcDbLinetypeTableRecord::dashLengthAt(int index) const { return at(index).length; }

const AcDbLinetypeTableRecord::Dash& AcDbLinetypeTableRecord::at(int index) const {
    static const Dash kNone;
    return index >= 0 && index < numDashes() ? dashes_[static_cast<std::size_t>(index)] : kNone;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double length) {
    if (index < 0 || index >= numDashes()) return Acad::eInvalidIndex;
    return change(dashes_[static_cast<std::size_t>(index)].length, length);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfInFields(AcDbDxfFiler* filer) {
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
            dashes_.emplace_back().length = tag.real();
            break;
        case 72:
            scaledToFit_ = tag.integer() == kScaledToFit;
            break;
        default:
            if (!dashes_.empty()) readDashField(*filer, tag);
            break;
        }
    }
    return Acad::eOk;
}

void AcDbLinetypeTableRecord::readDashField(AcDbDxfFiler& filer, const headless::DxfTag& tag) {
    Dash& dash = dashes_.back();
    switch (tag.code) {
    case 9:
        dash.text = filer.text(tag);
        break;
    case 44:
        dash.offset.x = tag.real();
        break;
    case 45:
        dash.offset.y = tag.real();
        break;
    case 46:
        dash.scale = tag.real();
        break;
    case 50:
        dash.rotation = tag.real() * std::numbers::pi / 180.0;
        break;
    case 74:
        dash.flags = static_cast<int>(tag.integer());
        break;
    case 75:
        dash.shapeNumber = static_cast<int>(tag.integer());
        break;
    case 340:
        dash.style = filer.objectId(tag);
        break;
    default:
        break;
    }
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSymbolTableRecord::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {2,  3,  9,  40, 44, 45, 46, 49,
                                              50, 70, 72, 73, 74, 75, 340};
    headless::DxfOutput& out = filer->output();
    beginFields(*filer, "AcDbLinetypeTableRecord", kCodes);
    out.flags(70, 0, 0);
    out.text(3, comments_);
    out.integer(72, scaledToFit_ ? kScaledToFit : kAligned);
    out.integer(73, std::ssize(dashes_));
    out.real(40, patternLength_);
    for (const Dash& dash : dashes_)
        writeDash(out, dash);
    return Acad::eOk;
}

void AcDbLinetypeTableRecord::writeDash(headless::DxfOutput& out, const Dash& dash) {
    out.real(49, dash.length);
    if (!out.since(headless::DrawingVersion::kR13)) return; // R12 has dashes and nothing on them.
    out.integer(74, dash.flags);
    if (dash.flags == 0) return;
    out.integer(75, dash.shapeNumber);
    out.handle(340, dash.style);
    out.real(46, dash.scale);
    out.angle(50, dash.rotation);
    out.real(44, dash.offset.x);
    out.real(45, dash.offset.y);
    if (!dash.text.empty()) out.text(9, dash.text);
}

Acad::ErrorStatus AcDbLinetypeTableRecord::subErase(bool erasing) {
    const AcDbDatabase* const db = database();
    const AcDbObjectId id = objectId();
    if (erasing && (id == db->byLayerLinetype() || id == db->byBlockLinetype() ||
                    id == db->continuousLinetype()))
        return Acad::eCannotBeErasedByCaller;
    return AcDbSymbolTableRecord::subErase(erasing);
}

void AcDbLinetypeTableRecord::forEachReference(const headless::ReferenceVisitor& visit) {
    for (Dash& dash : dashes_)
        visit(dash.style, headless::ReferenceKind::kHardPointer);
}
