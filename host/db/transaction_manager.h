// Brackets around changes that belong together.
#pragma once

#include <memory>
#include <vector>

#include "rx/object.h"

/// A bracket that is open.
class AcTransaction : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcTransaction);
};

/// Opens and closes brackets, which nest. Changes inside are made at once; a command that they run
/// in is undone as a whole, so they need no undoing of their own.
class AcDbTransactionManager : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbTransactionManager);

    AcDbTransactionManager() = default;
    AcDbTransactionManager(const AcDbTransactionManager&) = delete;
    AcDbTransactionManager& operator=(const AcDbTransactionManager&) = delete;

    /// The new bracket, which lasts until it is ended.
    virtual AcTransaction* startTransaction();
    /// Ends the innermost bracket; eInvalidInput when none is open.
    virtual Acad::ErrorStatus endTransaction();
    /// Asks for what changed in the bracket to be drawn; there is nothing to draw on.
    virtual void queueForGraphicsFlush() {}

    virtual int numActiveTransactions() { return static_cast<int>(open_.size()); }
    /// The innermost bracket, or null.
    virtual AcTransaction* topTransaction() { return open_.empty() ? nullptr : open_.back().get(); }

private:
    std::vector<std::unique_ptr<AcTransaction>> open_;
};
