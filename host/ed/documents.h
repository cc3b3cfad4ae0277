// The drawings that are open in the session, each a document around a database.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ed/app_messages.h"
#include "ed/current_view.h"
#include "rx/object.h"

class AcDbDatabase;

namespace headless {
class Documents;
}

struct AcAp {
    enum DocLockMode {
        kNone = 0x00,
        kAutoWrite = 0x01,
        kNotLocked = 0x02,
        kWrite = 0x04,
        kProtectedAutoWrite = 0x14,
        kRead = 0x20,
        kXWrite = 0x40
    };
};

class AcApDocument : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcApDocument);

    /// @param fileName  the drawing's full path, or the name shown for one that has no file yet.
    AcApDocument(std::unique_ptr<AcDbDatabase> database, std::wstring fileName, bool named);
    ~AcApDocument() override;

    AcDbDatabase* database() const { return database_.get(); }
    const ACHAR* fileName() const { return fileName_.c_str(); }
    /// The file's name without its folder.
    const ACHAR* docTitle() const;
    /// True when the drawing has a file.
    bool isNamedDrawing() const { return named_; }
    bool isReadOnly() const { return false; }
    /// True when no command is at work.
    bool isQuiescent() const;

    /// The strongest lock now held; kNone without any. There is one execution context, so all locks
    /// are its own.
    AcAp::DocLockMode lockMode(bool includeMyLocks = false) const;
    AcAp::DocLockMode myLockMode() const;

private:
    friend class AcApDocManager;
    friend class headless::Documents;

    std::unique_ptr<AcDbDatabase> database_;
    std::wstring fileName_;
    bool named_;
    std::vector<AcAp::DocLockMode> locks_;
    headless::ViewHistory views_;
};

namespace headless {

/// The open documents in the order they were opened, and which of them is current.
class Documents {
public:
    using Announce = std::function<void(AcRx::AppMsgCode)>;

    /// @param announce  tells the loaded applications of drawings that open and close.
    explicit Documents(Announce announce);
    ~Documents();
    Documents(const Documents&) = delete;
    Documents& operator=(const Documents&) = delete;

    /// Opens a document around the database and makes it current.
    AcApDocument* open(std::unique_ptr<AcDbDatabase> database, std::wstring fileName, bool named);
    /// Closes the document and deletes its database; the last opened one left becomes current.
    void close(const AcApDocument* document);
    void closeAll();

    /// The drawing was saved under that full path, which is its file from now on.
    static void setFile(AcApDocument& document, std::wstring fileName);

    AcApDocument* current() const { return current_; }
    /// Its database becomes the working database; null leaves none.
    void makeCurrent(AcApDocument* document);

    /// The document that the database belongs to, or null.
    AcApDocument* ofDatabase(const AcDbDatabase* database) const;
    bool contains(const AcApDocument* document) const;
    /// The former views of the database's document; null when it belongs to none.
    ViewHistory* viewsOf(const AcDbDatabase& database) const;
    /// How many locks of the document have been taken and not given back.
    static std::size_t lockCount(const AcApDocument& document) { return document.locks_.size(); }
    const std::vector<std::unique_ptr<AcApDocument>>& all() const { return documents_; }

private:
    Announce announce_;
    std::vector<std::unique_ptr<AcApDocument>> documents_;
    AcApDocument* current_ = nullptr;
};

} // namespace headless

/// Walks the open documents.
class AcApDocumentIterator {
public:
    explicit AcApDocumentIterator(std::vector<AcApDocument*> documents)
        : documents_(std::move(documents)) {}

    bool done() const { return at_ >= documents_.size(); }
    void step() { ++at_; }
    AcApDocument* document() { return done() ? nullptr : documents_[at_]; }

private:
    std::vector<AcApDocument*> documents_;
    std::size_t at_ = 0;
};

class AcApDocManager : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcApDocManager);

    explicit AcApDocManager(headless::Documents& documents) : documents_(documents) {}

    AcApDocument* curDocument() const { return documents_.current(); }
    AcApDocument* mdiActiveDocument() const { return documents_.current(); }
    AcApDocument* document(const AcDbDatabase* database) const;
    int documentCount() const;
    /// The caller deletes it.
    AcApDocumentIterator* newAcApDocumentIterator();

    /// eInvalidInput for a document that is not open.
    Acad::ErrorStatus setCurDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kNone,
                                     bool activate = false);
    Acad::ErrorStatus activateDocument(AcApDocument* document);

    /// Takes a lock, to be given back with unlockDocument. eInvalidInput for a document that is not
    /// open and for kNone and kNotLocked, which are no locks.
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite,
                                   const ACHAR* globalCommand = nullptr,
                                   const ACHAR* localCommand = nullptr, bool prompt = true);
    /// Gives the last lock back; eInvalidInput when there is none.
    Acad::ErrorStatus unlockDocument(AcApDocument* document);

    /// Puts the text into the input, to be taken as if typed; a line end in it is Enter.
    Acad::ErrorStatus sendStringToExecute(AcApDocument* document, const ACHAR* text,
                                          bool activate = true, bool wrapUpInactiveDoc = false,
                                          bool echo = true);

    bool isApplicationContext() const;

private:
    headless::Documents& documents_;
};

AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()

inline AcApDocument* curDoc() { return acDocManager->curDocument(); }
