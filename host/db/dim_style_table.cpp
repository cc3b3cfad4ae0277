#include "db/dim_style_table.h"

#include "db/dxf_filer.h"
#include "db/dxf_output.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbDimStyleTableRecord, AcDbSymbolTableRecord, "DIMSTYLE")
ACRX_CONS_DEFINE_MEMBERS(AcDbDimStyleTable, AcDbSymbolTable, 0)

using headless::DxfTag;

Acad::ErrorStatus AcDbDimStyleTableRecord::setDimpost(const ACHAR* text) {
    return text == nullptr ? Acad::eInvalidInput : change(dimpost_, text);
}

Acad::ErrorStatus AcDbDimStyleTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    for (const DxfTag& tag : filer->subclass("AcDbDimStyleTableRecord")) {
        if (double* const length = realOf(tag.code); length != nullptr)
            *length = tag.real();
        else if (AcCmEntityColor* const color = colorOf(tag.code); color != nullptr)
            color->setColorIndex(static_cast<int>(tag.integer()));
        else
            readField(*filer, tag);
    }
    return Acad::eOk;
}

double* AcDbDimStyleTableRecord::realOf(int code) {
    switch (code) {
    case 40:
        return &dimscale_;
    case 41:
        return &dimasz_;
    case 42:
        return &dimexo_;
    case 43:
        return &dimdli_;
    case 44:
        return &dimexe_;
    case 45:
        return &dimrnd_;
    case 140:
        return &dimtxt_;
    case 142:
        return &dimtsz_;
    case 144:
        return &dimlfac_;
    case 147:
        return &dimgap_;
    default:
        return nullptr;
    }
}

AcCmEntityColor* AcDbDimStyleTableRecord::colorOf(int code) {
    switch (code) {
    case 176:
        return &dimclrd_;
    case 177:
        return &dimclre_;
    case 178:
        return &dimclrt_;
    default:
        return nullptr;
    }
}

void AcDbDimStyleTableRecord::readField(AcDbDxfFiler& filer, const DxfTag& tag) {
    switch (tag.code) {
    case 3:
        dimpost_ = filer.text(tag);
        break;
    case 73:
        dimtih_ = tag.flag();
        break;
    case 74:
        dimtoh_ = tag.flag();
        break;
    case 77:
        dimtad_ = static_cast<int>(tag.integer());
        break;
    case 78:
        dimzin_ = static_cast<int>(tag.integer());
        break;
    case 271:
        dimdec_ = static_cast<int>(tag.integer());
        break;
    case 340:
        dimtxsty_ = filer.objectId(tag);
        break;
    case 341:
        dimldrblk_ = filer.objectId(tag);
        break;
    case 342:
        dimblk_ = filer.objectId(tag);
        break;
    default:
        break;
    }
}

Acad::ErrorStatus AcDbDimStyleTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSymbolTableRecord::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {2,   3,   40,  41,  42,  43,  44,  45,
                                              70,  73,  74,  77,  78,  140, 142, 144,
                                              147, 176, 177, 178, 271, 340, 341, 342};
    headless::DxfOutput& out = filer->output();
    beginFields(*filer, "AcDbDimStyleTableRecord", kCodes);
    out.flags(70, 0, 0);
    out.text(3, dimpost_);
    for (const auto& [code, value] :
         {std::pair(40, dimscale_), std::pair(41, dimasz_), std::pair(42, dimexo_),
          std::pair(43, dimdli_), std::pair(44, dimexe_), std::pair(45, dimrnd_),
          std::pair(140, dimtxt_), std::pair(142, dimtsz_), std::pair(144, dimlfac_),
          std::pair(147, dimgap_)})
        out.real(code, value);
    out.integer(73, dimtih_ ? 1 : 0);
    out.integer(74, dimtoh_ ? 1 : 0);
    out.integer(77, dimtad_);
    out.integer(78, dimzin_);
    out.integer(176, dimclrd_.nearestIndex());
    out.integer(177, dimclre_.nearestIndex());
    out.integer(178, dimclrt_.nearestIndex());
    if (out.since(headless::DrawingVersion::kR13)) out.integer(271, dimdec_);
    if (!out.since(headless::DrawingVersion::k2000)) return Acad::eOk;
    if (!dimtxsty_.isNull()) out.handle(340, dimtxsty_);
    if (!dimldrblk_.isNull()) out.handle(341, dimldrblk_);
    if (!dimblk_.isNull()) out.handle(342, dimblk_);
    return Acad::eOk;
}

void AcDbDimStyleTableRecord::forEachReference(const headless::ReferenceVisitor& visit) {
    visit(dimtxsty_, headless::ReferenceKind::kHardPointer);
    visit(dimldrblk_, headless::ReferenceKind::kHardPointer);
    visit(dimblk_, headless::ReferenceKind::kHardPointer);
}
