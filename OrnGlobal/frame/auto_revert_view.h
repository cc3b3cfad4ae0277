// A scope that leaves the view as it found it.
#pragma once

#include <afxwin.h>
#include <dbsymtb.h>

/// Takes down the current view, and in the end makes it the view of the current viewport. A copy
/// holds the same view. Nothing is reported.
class AFX_EXT_CLASS AutoRevertView {
public:
    AutoRevertView();
    AutoRevertView(const AutoRevertView&) = default;
    AutoRevertView& operator=(const AutoRevertView&) = default;
    ~AutoRevertView();

    /// The view that will be restored.
    const AcDbViewTableRecord& view() const { return view_; }

private:
    /// A view that belongs to no drawing and can be copied.
    class Record : public AcDbViewTableRecord {
    public:
        Record() = default;
        Record(const Record& other) : AcDbViewTableRecord() { copyFrom(other); }
        Record& operator=(const Record& other) {
            copyFrom(other);
            return *this;
        }
        ~Record() override = default;

    private:
        void copyFrom(const Record& other);
    };

    Record view_;
};
