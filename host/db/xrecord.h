// Records of an application's own data.
#pragma once

#include "db/dictionary.h"

/// The data themselves stay in the file the record was read from.
class AcDbXrecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbXrecord);

    AcDbXrecord() = default;

    AcDb::DuplicateRecordCloning mergeStyle() const { return look(mergeStyle_); }
    Acad::ErrorStatus setMergeStyle(AcDb::DuplicateRecordCloning style) {
        return change(mergeStyle_, style);
    }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;

private:
    AcDb::DuplicateRecordCloning mergeStyle_ = AcDb::kDrcIgnore;
};
