// Records of an application's own data.
#pragma once

#include <optional>
#include <vector>

#include "db/data_item.h"
#include "db/dictionary.h"
#include "db/resbuf.h"

/// A list of values in an order of its application's own. The list stays in the file that the
/// record was read from until it is set anew.
class AcDbXrecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbXrecord);

    AcDbXrecord() = default;

    /// A copy of the list that the caller frees with acutRelRb; null for a record without values.
    Acad::ErrorStatus rbChain(resbuf** chain, AcDbDatabase* auxDb = nullptr) const;
    /// Replaces the list, which stays the caller's. Codes are those of group values from 1 on but 5
    /// and 105 (handles of the record itself), 100 and 101 (parts of an object), 999 (comments) and
    /// 1001 (extended data); 330 to 369 name objects. eInvalidResBuf, changing nothing, for any
    /// other and for names of unknown objects.
    Acad::ErrorStatus setFromRbChain(const resbuf& chain, AcDbDatabase* auxDb = nullptr);

    /// Whether ids among the values go along when the record is copied.
    bool isXlateReferences() const { return look(xlateReferences_); }
    Acad::ErrorStatus setXlateReferences(bool translate) {
        return change(xlateReferences_, translate);
    }

    AcDb::DuplicateRecordCloning mergeStyle() const { return look(mergeStyle_); }
    Acad::ErrorStatus setMergeStyle(AcDb::DuplicateRecordCloning style) {
        return change(mergeStyle_, style);
    }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

    /// True while the values are those of the file that the record was read from.
    bool holdsFileValues() const { return !items_; }
    /// The values whether or not the record is open.
    headless::DataItems items() const;

protected:
    void becomeIndependent(const AcDbObject& original) override;

private:
    std::optional<headless::DataItems> items_; // empty: as in the file
    AcDb::DuplicateRecordCloning mergeStyle_ = AcDb::kDrcIgnore;
    bool xlateReferences_ = true;
};

/// Walks over the values that a record had when the iterator was made.
class AcDbXrecordIterator : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbXrecordIterator);

    /// The record must be open for reading.
    explicit AcDbXrecordIterator(const AcDbXrecord* record);

    void start() { position_ = 0; }
    bool done() const { return position_ >= items_.size(); }
    /// False when it has gone beyond the last value.
    bool next();
    /// The value's group code; RTNONE beyond the last value.
    int curRbType() const;
    /// Fills a buffer of the caller's, who frees the text or chunk in it. eIteratorDone.
    Acad::ErrorStatus getCurResbuf(resbuf& buffer, AcDbDatabase* auxDb = nullptr) const;

private:
    headless::DataItems items_;
    std::size_t position_ = 0;
};
