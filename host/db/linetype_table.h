// Linetypes: patterns of dashes and gaps.
#pragma once

#include "db/symbol_table.h"

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
    /// True when the pattern is squeezed to begin and end with a dash.
    bool isScaledToFit() const { return look(scaledToFit_); }
    Acad::ErrorStatus setIsScaledToFit(bool fit) { return change(scaledToFit_, fit); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;

protected:
    Acad::ErrorStatus subErase(bool erasing) override;

private:
    std::wstring comments_;
    std::vector<double> dashes_;
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
