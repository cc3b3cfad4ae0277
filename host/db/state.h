// What the database layer holds for one session, and the platform's access to it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "db/object.h"
#include "db/transaction_manager.h"
#include "win/session_state.h"

class AcDbDatabase;

/// Services that databases ask of the program around them.
class AcDbHostApplicationServices : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbHostApplicationServices);

    AcDbHostApplicationServices() = default;

    AcDbDatabase* workingDatabase() const { return workingDatabase_; }
    void setWorkingDatabase(AcDbDatabase* db) { workingDatabase_ = db; }

    virtual AcDbTransactionManager* workingTransactionManager() { return &transactions_; }

private:
    AcDbTransactionManager transactions_;
    AcDbDatabase* workingDatabase_ = nullptr;
};

/// The current session's services; never null.
AcDbHostApplicationServices* acdbHostApplicationServices();

namespace headless {

class FontLibrary;

/// How saving a drawing ended, and what the user is to know of it: why it failed, or notes.
struct SavedDrawing {
    bool done = false;
    std::string text;
};

class DbState : public SessionState<DbState> {
public:
    /// Told of a member called on an object that is not open for it; `needed` is "reading" or
    /// "writing". When it returns, the call goes on.
    using OpenViolation = std::function<void(const AcDbObject&, const char* needed)>;

    /// Writes a drawing into a file of that name.
    using Writer = std::function<SavedDrawing(AcDbDatabase&, const std::wstring& file)>;

    DbState();
    /// Databases still alive go on without a session.
    ~DbState();

    /// The newest living state; the process's own when no session made one.
    static DbState& current();

    /// Saves through the writer; fails where there is none.
    SavedDrawing save(AcDbDatabase& db, const std::wstring& file) const;

    /// The fonts that texts were measured by.
    FontLibrary& fonts();

    AcDbHostApplicationServices services;
    std::vector<AcDbDatabase*> databases; ///< All alive, the oldest first.
    long liveResultBuffers = 0;           ///< Made by acutNewRb and not freed yet.
    Writer writer;                        ///< Set by whoever knows how files are written.
    OpenViolation openViolation;          ///< Empty: print what is wrong and abort.

private:
    struct ProcessWide {};
    explicit DbState(ProcessWide);

    std::unique_ptr<FontLibrary> fonts_;
};

} // namespace headless
