#include "ed/documents.h"

#include <algorithm>

#include "db/database.h"
#include "db/fault_hook.h"
#include "db/state.h"
#include "ed/state.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocument, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocManager, AcRxObject)

AcApDocument::AcApDocument(std::unique_ptr<AcDbDatabase> database, std::wstring fileName,
                           bool named)
    : database_(std::move(database)), fileName_(std::move(fileName)), named_(named) {}

AcApDocument::~AcApDocument() = default;

const ACHAR* AcApDocument::docTitle() const {
    const std::size_t slash = fileName_.find_last_of(L"/\\");
    return fileName_.c_str() + (slash == std::wstring::npos ? 0 : slash + 1);
}

bool AcApDocument::isQuiescent() const { return headless::EdState::current().runner.isQuiescent(); }

AcAp::DocLockMode AcApDocument::lockMode(bool /*includeMyLocks*/) const { return myLockMode(); }

AcAp::DocLockMode AcApDocument::myLockMode() const {
    // From weak to strong.
    constexpr AcAp::DocLockMode kOrder[] = {
        AcAp::kNone,      AcAp::kRead,  AcAp::kProtectedAutoWrite,
        AcAp::kAutoWrite, AcAp::kWrite, AcAp::kXWrite};
    const auto rank = [&](AcAp::DocLockMode mode) { return std::ranges::find(kOrder, mode); };
    const auto strongest = std::ranges::max_element(locks_, {}, rank);
    return strongest == locks_.end() ? AcAp::kNone : *strongest;
}

namespace headless {

Documents::Documents(Announce announce) : announce_(std::move(announce)) {}

Documents::~Documents() = default;

AcApDocument* Documents::open(std::unique_ptr<AcDbDatabase> database, std::wstring fileName,
                              bool named) {
    documents_.push_back(
        std::make_unique<AcApDocument>(std::move(database), std::move(fileName), named));
    makeCurrent(documents_.back().get());
    current_->database()->disableUndoRecording(false);
    announce_(AcRx::kLoadDwgMsg);
    return current_;
}

void Documents::close(const AcApDocument* document) {
    const auto at = std::ranges::find(documents_, document, &std::unique_ptr<AcApDocument>::get);
    if (at == documents_.end()) return;
    makeCurrent(at->get()); // The applications look at the drawing that goes.
    announce_(AcRx::kUnloadDwgMsg);
    documents_.erase(at);
    makeCurrent(documents_.empty() ? nullptr : documents_.back().get());
}

void Documents::closeAll() {
    while (!documents_.empty())
        close(documents_.back().get());
}

void Documents::setFile(AcApDocument& document, std::wstring fileName) {
    document.fileName_ = std::move(fileName);
    document.named_ = true;
}

void Documents::makeCurrent(AcApDocument* document) {
    current_ = document;
    acdbHostApplicationServices()->setWorkingDatabase(document == nullptr ? nullptr
                                                                          : document->database());
}

AcApDocument* Documents::ofDatabase(const AcDbDatabase* database) const {
    const auto at = std::ranges::find_if(
        documents_, [&](const auto& document) { return document->database() == database; });
    return at == documents_.end() ? nullptr : at->get();
}

ViewHistory* Documents::viewsOf(const AcDbDatabase& database) const {
    AcApDocument* document = ofDatabase(&database);
    return document == nullptr ? nullptr : &document->views_;
}

bool Documents::contains(const AcApDocument* document) const {
    return std::ranges::any_of(documents_,
                               [&](const auto& open) { return open.get() == document; });
}

} // namespace headless

AcApDocument* AcApDocManager::document(const AcDbDatabase* database) const {
    return documents_.ofDatabase(database);
}

int AcApDocManager::documentCount() const { return static_cast<int>(documents_.all().size()); }

AcApDocumentIterator* AcApDocManager::newAcApDocumentIterator() {
    std::vector<AcApDocument*> documents;
    for (const auto& document : documents_.all())
        documents.push_back(document.get());
    return new AcApDocumentIterator(std::move(documents));
}

Acad::ErrorStatus AcApDocManager::setCurDocument(AcApDocument* document, AcAp::DocLockMode mode,
                                                 bool /*activate*/) {
    if (!documents_.contains(document)) return Acad::eInvalidInput;
    documents_.makeCurrent(document);
    return mode == AcAp::kNone ? Acad::eOk : lockDocument(document, mode);
}

Acad::ErrorStatus AcApDocManager::activateDocument(AcApDocument* document) {
    return setCurDocument(document, AcAp::kNone, true);
}

Acad::ErrorStatus AcApDocManager::lockDocument(AcApDocument* document, AcAp::DocLockMode mode,
                                               const ACHAR* /*globalCommand*/,
                                               const ACHAR* /*localCommand*/, bool /*prompt*/) {
    if (!documents_.contains(document)) return Acad::eInvalidInput;
    if (mode == AcAp::kNone || mode == AcAp::kNotLocked) return Acad::eInvalidInput;
    if (headless::FaultHook::fails("lockDocument")) return Acad::eLockViolation;
    document->locks_.push_back(mode);
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::unlockDocument(AcApDocument* document) {
    if (!documents_.contains(document) || document->locks_.empty()) return Acad::eInvalidInput;
    document->locks_.pop_back();
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::sendStringToExecute(AcApDocument* document, const ACHAR* text,
                                                      bool activate, bool /*wrapUpInactiveDoc*/,
                                                      bool /*echo*/) {
    if (!documents_.contains(document) || text == nullptr) return Acad::eInvalidInput;
    if (activate) documents_.makeCurrent(document);
    headless::EdState::current().input.typeText(text);
    return Acad::eOk;
}

bool AcApDocManager::isApplicationContext() const {
    return headless::EdState::current().runner.isQuiescent();
}

AcApDocManager* acDocManagerPtr() { return &headless::EdState::current().documentManager; }
