// Linetypes: patterns of dashes and gaps.
#pragma once

#include "db/symbol_table.h"
#include "ge/vector2d.h"

namespace headless {
class DxfOutput;
struct DxfTag;
} // namespace headless

class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord);

    AcDbLinetypeTableRecord() = default;

    /// Copies that the caller frees with acutDelString.
    Acad::ErrorStatus comments(ACHAR*& comments) const;
    Acad::ErrorStatus setComments(const ACHAR* comments);
    Acad::ErrorStatus asciiDescription(ACHAR*& description) const { return comments(description); }

    /// Drawing units from where the pattern begins to where it begins again; 0 for continuous ones.
    double patternLength() const { return look(patternLength_); }
    Acad::ErrorStatus setPatternLength(double length) { return change(patternLength_, length); }
    int numDashes() const { return static_cast<int>(look(dashes_).size()); }
    /// New dashes have length 0. eInvalidInput for a negative count.
    Acad::ErrorStatus setNumDashes(int count);
    /// Positive for a dash, negative for a gap, 0 for a dot; 0 beyond the last.
    double dashLengthAt(int index) const;
    /// eInvalidIndex beyond the last.
    Acad::ErrorStatus setDashLengthAt(int index, double length);

    // What stands on a dash: a shape of a style's shape file by its number, or a text. 0, empty and
    // null where there is none, and beyond the last.
    int shapeNumberAt(int index) const { return at(index).shapeNumber; }
    AcDbObjectId shapeStyleAt(int index) const { return at(index).style; }
    const ACHAR* textAt(int index) const { return at(index).text.c_str(); }
    AcGeVector2d shapeOffsetAt(int index) const { return at(index).offset; }
    double shapeScaleAt(int index) const { return at(index).scale; }
    double shapeRotationAt(int index) const { return at(index).rotation; }
    /// True when the rotation counts from the world's x axis rather than from the line.
    bool shapeIsUcsOrientedAt(int index) const { return (at(index).flags & 1) != 0; }
    /// True when the pattern is squeezed to begin and end with a dash.
    bool isScaledToFit() const { return look(scaledToFit_); }
    Acad::ErrorStatus setIsScaledToFit(bool fit) { return change(scaledToFit_, fit); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

protected:
    Acad::ErrorStatus subErase(bool erasing) override;

private:
    struct Dash {
        double length = 0.0;
        int flags = 0; // 1 turned from the world's axis, 2 a text, 4 a shape
        int shapeNumber = 0;
        AcDbObjectId style;
        double scale = 1.0;
        double rotation = 0.0;
        AcGeVector2d offset;
        std::wstring text;
    };

    /// A dash without anything beyond the last.
    const Dash& at(int index) const;
    void readDashField(AcDbDxfFiler& filer, const headless::DxfTag& tag);
    static void writeDash(headless::DxfOutput& out, const Dash& dash);

    std::wstring comments_;
    std::vector<Dash> dashes_;
    double patternLength_ = 0.0;
    bool scaledToFit_ = false;
};

class AcDbLinetypeTableIterator : public headless::SymbolTableIteratorOf<AcDbLinetypeTableRecord> {
public:
    using SymbolTableIteratorOf::SymbolTableIteratorOf;
};

class AcDbLinetypeTable
    : public headless::SymbolTableOf<AcDbLinetypeTableRecord, AcDbLinetypeTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTable);
};
