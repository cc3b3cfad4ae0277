#include "db/undo_journal.h"

#include <algorithm>
#include <utility>

#include "db/change_watch.h"
#include "db/object_state.h"
#include "db/residence.h"

namespace headless {

std::uint32_t currentUndoStep = 0;

void noteForUndo(AcDbObject& object) { UndoJournal::note(object); }

UndoJournal* UndoJournal::recordingFor(const AcDbObject& object) {
    const AcDbDatabase* const db = object.database();
    UndoJournal* const journal = db == nullptr ? nullptr : db->undoJournal();
    return journal != nullptr && journal->records() ? journal : nullptr;
}

UndoJournal::UndoJournal(AcDbDatabase& database) : database_(database) { seal(); }

void UndoJournal::seal() {
    growing_ = false;
    ++currentUndoStep;
}

void UndoJournal::note(AcDbObject& object) {
    if (object.undoStep_ == currentUndoStep) return;
    object.undoStep_ = currentUndoStep;
    UndoJournal* const journal = recordingFor(object);
    if (journal == nullptr) return;
    journal->growingChanges().entries.push_back(
        {object.objectId(), ObjectState::copyOf(object), object.isErased()});
}

void UndoJournal::noteNew(AcDbObject& object) {
    object.undoStep_ = currentUndoStep;
    UndoJournal* const journal = recordingFor(object);
    if (journal == nullptr) return;
    journal->growingChanges().entries.push_back({object.objectId(), nullptr, true});
}

void UndoJournal::noteSettings() {
    if (!records()) return;
    Changes& changes = growingChanges();
    if (changes.settings != nullptr) return;
    changes.settings = std::make_unique<DrawingSettings>(database_.settings());
}

UndoJournal::Changes& UndoJournal::growingChanges() {
    if (!growing_) {
        undone_.clear();
        done_.emplace_back();
        growing_ = true;
    }
    return std::get<Changes>(done_.back());
}

void UndoJournal::push(Item item) {
    done_.push_back(std::move(item));
    seal();
}

/// A group without anything in it leaves no trace.
void UndoJournal::pushEnd() {
    if (!done_.empty() && std::holds_alternative<GroupBegin>(done_.back())) {
        done_.pop_back();
        seal();
    } else {
        push(GroupEnd{});
    }
}

void UndoJournal::beginCommand(std::wstring name) {
    if (keepsOne_ && open_.empty() && transactions_.empty()) clear();
    open_.push_back(Opener::kCommand);
    push(GroupBegin{std::move(name)});
}

void UndoJournal::endCommand() {
    if (!inCommand()) return; // The drawing was opened by this very command.
    while (inGroup())
        endGroup();
    open_.pop_back();
    pushEnd();
}

void UndoJournal::beginGroup() {
    endGroup();
    open_.push_back(Opener::kUser);
    push(GroupBegin{L"GROUP"});
}

void UndoJournal::endGroup() {
    if (!inGroup()) return;
    open_.pop_back();
    pushEnd();
}

bool UndoJournal::inCommand() const {
    return std::find(open_.begin(), open_.end(), Opener::kCommand) != open_.end();
}

void UndoJournal::mark() { push(Mark{}); }

int UndoJournal::markCount() const {
    return static_cast<int>(std::count_if(done_.begin(), done_.end(), [](const Item& item) {
        return std::holds_alternative<Mark>(item);
    }));
}

void UndoJournal::exchange(Entry& entry) {
    AcDbStub* const stub = entry.id;
    if (stub->object == nullptr) return; // Deleted since, by a program that should not have.
    if (entry.state != nullptr) {
        std::unique_ptr<AcDbObject> present = ObjectState::copyOf(*stub->object);
        ObjectState::restore(*stub->object, *entry.state);
        entry.state = std::move(present);
    } else {
        stub->object->beforeChange();
    }
    if (stub->erased != entry.erased) noteChange(*stub->object);
    std::swap(stub->erased, entry.erased);
}

void UndoJournal::exchange(Changes& changes, bool backward) {
    // An object stands twice in one list when a step of another drawing came between.
    std::vector<Entry>& entries = changes.entries;
    if (backward)
        std::for_each(entries.rbegin(), entries.rend(), [](Entry& entry) { exchange(entry); });
    else
        std::for_each(entries.begin(), entries.end(), [](Entry& entry) { exchange(entry); });
    if (changes.settings != nullptr) database_.exchangeSettings(*changes.settings);
}

/// Moves the last item over, its changes undone.
UndoJournal::Item& UndoJournal::takeLast(Items& taken) {
    Item& item = taken.emplace_back(std::move(done_.back()));
    done_.pop_back();
    if (auto* const changes = std::get_if<Changes>(&item)) exchange(*changes, true);
    return item;
}

UndoneOperation UndoJournal::undoOne(Items& taken) {
    using Kind = UndoneOperation::Kind;
    const bool atBegin = done_.empty() || std::holds_alternative<GroupBegin>(done_.back()) ||
                         std::holds_alternative<TransactionBegin>(done_.back());
    if (atBegin) return {};
    UndoneOperation undone{Kind::kStep, {}};
    if (std::holds_alternative<Mark>(done_.back())) undone.kind = Kind::kMark;
    int depth = 0;
    do {
        const Item& item = takeLast(taken);
        if (std::holds_alternative<GroupEnd>(item)) ++depth;
        if (const auto* const begin = std::get_if<GroupBegin>(&item)) {
            --depth;
            undone.name = begin->name;
        }
    } while (depth > 0);
    return undone;
}

void UndoJournal::keepForRedo(Items taken) {
    seal();
    std::erase_if(taken, [](const Item& item) { // Left open by a command that ended.
        return std::holds_alternative<TransactionBegin>(item);
    });
    if (!taken.empty() && !inCommand()) undone_.push_back(std::move(taken));
}

std::vector<UndoneOperation> UndoJournal::undo(int count) {
    std::vector<UndoneOperation> operations;
    Items taken;
    for (int i = 0; i < count; ++i) {
        operations.push_back(undoOne(taken));
        if (operations.back().kind == UndoneOperation::Kind::kNothing) break;
    }
    keepForRedo(std::move(taken));
    return operations;
}

template <class... Kinds>
UndoJournal::TakenBack UndoJournal::takeBackTo() {
    TakenBack taken;
    while (!done_.empty() && !(std::holds_alternative<Kinds>(done_.back()) || ...)) {
        const Item& item = takeLast(taken.items);
        if (std::holds_alternative<GroupEnd>(item)) ++taken.ends;
        const auto* const begin = std::get_if<GroupBegin>(&item);
        if (begin == nullptr) continue;
        if (taken.ends > 0)
            --taken.ends;
        else
            taken.begins.push_back(begin->name);
    }
    return taken;
}

void UndoJournal::mendGroups(TakenBack& taken) {
    for (; taken.ends > 0; --taken.ends)
        pushEnd();
    for (; !taken.begins.empty(); taken.begins.pop_back())
        push(GroupBegin{std::move(taken.begins.back())});
}

bool UndoJournal::undoToMark() {
    TakenBack taken = takeBackTo<Mark, TransactionBegin>();
    const bool marked = !done_.empty() && std::holds_alternative<Mark>(done_.back());
    if (marked) takeLast(taken.items);
    const bool whole = taken.isWhole();
    mendGroups(taken);
    keepForRedo(whole ? std::move(taken.items) : Items());
    return marked;
}

void UndoJournal::beginTransaction(std::size_t depth) {
    const bool inGroup = !open_.empty() || !transactions_.empty();
    transactions_.push_back(depth);
    push(TransactionBegin{depth, inGroup});
}

std::deque<UndoJournal::Item>::iterator UndoJournal::closeTransaction(std::size_t depth) {
    if (transactions_.empty() || transactions_.back() != depth) return done_.end();
    transactions_.pop_back();
    const auto begin = std::find_if(done_.rbegin(), done_.rend(), [&](const Item& item) {
        const auto* const found = std::get_if<TransactionBegin>(&item);
        return found != nullptr && found->depth == depth;
    });
    return begin == done_.rend() ? done_.end() : std::prev(begin.base());
}

void UndoJournal::endTransaction(std::size_t depth) {
    const auto begin = closeTransaction(depth);
    if (begin == done_.end()) return;
    if (!records()) {
        done_.erase(
            std::remove_if(begin, done_.end(),
                           [](const Item& item) { return std::holds_alternative<Changes>(item); }),
            done_.end());
    }
    const bool groups = open_.empty() && !std::get<TransactionBegin>(*begin).inGroup;
    if (groups) {
        *begin = GroupBegin{};
        pushEnd();
    } else {
        done_.erase(begin);
        seal();
    }
}

void UndoJournal::abortTransaction(std::size_t depth) {
    if (closeTransaction(depth) == done_.end()) return;
    TakenBack taken = takeBackTo<TransactionBegin>();
    done_.pop_back();
    mendGroups(taken);
    seal();
}

bool UndoJournal::redo() {
    if (undone_.empty()) return false;
    Items items = std::move(undone_.back());
    undone_.pop_back();
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        if (auto* const changes = std::get_if<Changes>(&*item)) exchange(*changes, false);
        done_.push_back(std::move(*item));
    }
    seal();
    return true;
}

void UndoJournal::setRecording(bool recording) {
    recording_ = recording;
    seal();
}

void UndoJournal::clear() {
    done_.clear();
    undone_.clear();
    seal();
    for (std::size_t i = 0; i < open_.size(); ++i)
        push(GroupBegin{});
}

} // namespace headless
