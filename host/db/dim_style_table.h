// Dimension styles.
#pragma once

#include "db/color.h"
#include "db/symbol_table.h"

namespace headless {
struct DxfTag;
} // namespace headless

/// A style by which dimensions are drawn. The members are the dimension variables that decide how
/// large and where the parts are; lengths in drawing units before scaling by dimscale.
class AcDbDimStyleTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTableRecord);

    AcDbDimStyleTableRecord() = default;

    /// Scale of all sizes.
    double dimscale() const { return look(dimscale_); }
    Acad::ErrorStatus setDimscale(double value) { return change(dimscale_, value); }
    /// Arrow size.
    double dimasz() const { return look(dimasz_); }
    Acad::ErrorStatus setDimasz(double value) { return change(dimasz_, value); }
    /// Gap between origin and extension line.
    double dimexo() const { return look(dimexo_); }
    Acad::ErrorStatus setDimexo(double value) { return change(dimexo_, value); }
    /// How far extension lines run beyond the dimension line.
    double dimexe() const { return look(dimexe_); }
    Acad::ErrorStatus setDimexe(double value) { return change(dimexe_, value); }
    /// Distance of stacked dimension lines.
    double dimdli() const { return look(dimdli_); }
    Acad::ErrorStatus setDimdli(double value) { return change(dimdli_, value); }
    /// Size of tick strokes; 0 draws arrows.
    double dimtsz() const { return look(dimtsz_); }
    Acad::ErrorStatus setDimtsz(double value) { return change(dimtsz_, value); }
    /// Text height.
    double dimtxt() const { return look(dimtxt_); }
    Acad::ErrorStatus setDimtxt(double value) { return change(dimtxt_, value); }
    /// Gap around the text.
    double dimgap() const { return look(dimgap_); }
    Acad::ErrorStatus setDimgap(double value) { return change(dimgap_, value); }
    /// Factor of measured lengths.
    double dimlfac() const { return look(dimlfac_); }
    Acad::ErrorStatus setDimlfac(double value) { return change(dimlfac_, value); }
    /// Measured lengths are rounded to multiples of this; 0 does not round.
    double dimrnd() const { return look(dimrnd_); }
    Acad::ErrorStatus setDimrnd(double value) { return change(dimrnd_, value); }
    /// Decimal places.
    int dimdec() const { return look(dimdec_); }
    Acad::ErrorStatus setDimdec(int value) { return change(dimdec_, value); }
    /// Which zeros are left out, as bits.
    int dimzin() const { return look(dimzin_); }
    Acad::ErrorStatus setDimzin(int value) { return change(dimzin_, value); }
    /// Where the text stands above the line.
    int dimtad() const { return look(dimtad_); }
    Acad::ErrorStatus setDimtad(int value) { return change(dimtad_, value); }
    /// Texts inside and outside the extension lines stand level.
    bool dimtih() const { return look(dimtih_); }
    Acad::ErrorStatus setDimtih(bool value) { return change(dimtih_, value); }
    bool dimtoh() const { return look(dimtoh_); }
    Acad::ErrorStatus setDimtoh(bool value) { return change(dimtoh_, value); }

    AcCmColor dimclrd() const { return AcCmColor(look(dimclrd_)); }
    Acad::ErrorStatus setDimclrd(const AcCmColor& color) { return change(dimclrd_, color); }
    AcCmColor dimclre() const { return AcCmColor(look(dimclre_)); }
    Acad::ErrorStatus setDimclre(const AcCmColor& color) { return change(dimclre_, color); }
    AcCmColor dimclrt() const { return AcCmColor(look(dimclrt_)); }
    Acad::ErrorStatus setDimclrt(const AcCmColor& color) { return change(dimclrt_, color); }
    AcDbObjectId dimtxsty() const { return look(dimtxsty_); }
    Acad::ErrorStatus setDimtxsty(AcDbObjectId style) { return change(dimtxsty_, style); }
    AcDbObjectId dimblk() const { return look(dimblk_); }
    Acad::ErrorStatus setDimblk(AcDbObjectId block) { return change(dimblk_, block); }
    /// The block of leaders' arrows.
    AcDbObjectId dimldrblk() const { return look(dimldrblk_); }
    Acad::ErrorStatus setDimldrblk(AcDbObjectId block) { return change(dimldrblk_, block); }
    /// Text put around the measurement, with <> where that stands; valid until the record changes.
    const ACHAR* dimpost() const { return look(dimpost_).c_str(); }
    Acad::ErrorStatus setDimpost(const ACHAR* text);

    /// How leaders begin, whether or not the style is open.
    struct LeaderArrow {
        double size = 2.5;
        double scale = 1.0;
        AcDbObjectId block; // null for a filled triangle
    };
    LeaderArrow leaderArrow() const { return {dimasz_, dimscale_, dimldrblk_}; }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

private:
    // The member that a group of a record is the value of, or null.
    double* realOf(int code);
    AcCmEntityColor* colorOf(int code);
    void readField(AcDbDxfFiler& filer, const headless::DxfTag& tag);

    double dimscale_ = 1.0;
    double dimasz_ = 2.5;
    double dimexo_ = 0.625;
    double dimexe_ = 1.25;
    double dimdli_ = 3.75;
    double dimtsz_ = 0.0;
    double dimtxt_ = 2.5;
    double dimgap_ = 0.625;
    double dimlfac_ = 1.0;
    double dimrnd_ = 0.0;
    AcDbObjectId dimtxsty_;
    AcDbObjectId dimblk_;
    AcDbObjectId dimldrblk_;
    std::wstring dimpost_;
    int dimdec_ = 2;
    int dimzin_ = 8;
    int dimtad_ = 1;
    AcCmEntityColor dimclrd_{AcCmEntityColor::kByBlock};
    AcCmEntityColor dimclre_{AcCmEntityColor::kByBlock};
    AcCmEntityColor dimclrt_{AcCmEntityColor::kByBlock};
    bool dimtih_ = false;
    bool dimtoh_ = false;
};

class AcDbDimStyleTableIterator : public headless::SymbolTableIteratorOf<AcDbDimStyleTableRecord> {
public:
    using SymbolTableIteratorOf::SymbolTableIteratorOf;
};

class AcDbDimStyleTable
    : public headless::SymbolTableOf<AcDbDimStyleTableRecord, AcDbDimStyleTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTable);
};
