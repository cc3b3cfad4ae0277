// Text styles: fonts and how texts in them stand.
#pragma once

#include "db/font.h"
#include "db/symbol_table.h"

namespace headless {
class DxfOutput;
struct DxfTag;
} // namespace headless

class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord);

    AcDbTextStyleTableRecord() = default;

    /// The font's file, in texts that the caller frees with acutDelString or in the record's own.
    Acad::ErrorStatus fileName(ACHAR*& name) const;
    Acad::ErrorStatus fileName(const ACHAR*& name) const;
    Acad::ErrorStatus setFileName(const ACHAR* name);
    /// The second font, for letters of many strokes; empty when there is none.
    Acad::ErrorStatus bigFontFileName(ACHAR*& name) const;
    Acad::ErrorStatus bigFontFileName(const ACHAR*& name) const;
    Acad::ErrorStatus setBigFontFileName(const ACHAR* name);

    /// A font of the system instead of a file. The type face is empty when the style names a file.
    Acad::ErrorStatus font(ACHAR*& typeface, bool& bold, bool& italic, int& charset,
                           int& pitchAndFamily) const;
    Acad::ErrorStatus setFont(const ACHAR* typeface, bool bold, bool italic, int charset,
                              int pitchAndFamily);

    /// The height of all texts in the style, in drawing units; 0 leaves it to each text.
    double textSize() const { return look(textSize_); }
    Acad::ErrorStatus setTextSize(double size);
    /// The height last used, offered for the next text.
    double priorSize() const { return look(priorSize_); }
    Acad::ErrorStatus setPriorSize(double size);
    /// Width factor, above 0.
    double xScale() const { return look(xScale_); }
    Acad::ErrorStatus setXScale(double scale);
    /// Lean to the right, radians.
    double obliquingAngle() const { return look(obliquing_); }
    Acad::ErrorStatus setObliquingAngle(double angle) { return change(obliquing_, angle); }

    bool isVertical() const { return look(vertical_); }
    Acad::ErrorStatus setIsVertical(bool vertical) { return change(vertical_, vertical); }
    /// True for a file of shapes instead of letters; such styles have no name.
    bool isShapeFile() const { return look(shapeFile_); }
    Acad::ErrorStatus setIsShapeFile(bool shapes) { return change(shapeFile_, shapes); }
    /// 2 mirrored in x (backward), 4 mirrored in y (upside down).
    Adesk::UInt8 flagBits() const { return look(flagBits_); }
    Acad::ErrorStatus setFlagBits(Adesk::UInt8 bits) { return change(flagBits_, bits); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    /// The font that texts are measured by, whether or not the record is open.
    headless::FontRequest fontRequest() const { return {file_, typeface_, bold_, italic_}; }
    double xScaleOf() const { return xScale_; }
    double obliquingOf() const { return obliquing_; }

    /// Font family and style from a record's extended data under ACAD.
    void readFont(std::wstring typeface, std::int64_t packedFlags);

private:
    void readField(AcDbDxfFiler& filer, const headless::DxfTag& tag);
    void writeFont(headless::DxfOutput& out) const;

    std::wstring file_;
    std::wstring bigFont_;
    std::wstring typeface_;
    double textSize_ = 0.0;
    double priorSize_ = 2.5;
    double xScale_ = 1.0;
    double obliquing_ = 0.0;
    int charset_ = 0;
    int pitchAndFamily_ = 0;
    Adesk::UInt8 flagBits_ = 0;
    bool bold_ = false;
    bool italic_ = false;
    bool vertical_ = false;
    bool shapeFile_ = false;
};

class AcDbTextStyleTableIterator
    : public headless::SymbolTableIteratorOf<AcDbTextStyleTableRecord> {
public:
    using SymbolTableIteratorOf::SymbolTableIteratorOf;
};

class AcDbTextStyleTable
    : public headless::SymbolTableOf<AcDbTextStyleTableRecord, AcDbTextStyleTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTable);

protected:
    /// Shape files go without a name.
    Acad::ErrorStatus checkName(const AcDbSymbolTableRecord& record) const override;
};
