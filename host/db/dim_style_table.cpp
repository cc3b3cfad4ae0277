#include "db/dim_style_table.h"

#include "db/dxf_filer.h"

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
    case 342:
        dimblk_ = filer.objectId(tag);
        break;
    default:
        break;
    }
}
