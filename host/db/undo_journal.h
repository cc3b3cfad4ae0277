// What was changed in a drawing, so that it can be taken back.
//
// Before the first change of an object in a step its state is copied; undoing puts the copy in
// place and keeps what was there, so redoing is the same exchange once more. Objects that were
// added are erased by undoing and stay where they are: ids, handles and the order of blocks never
// go back. Memory is taken for what was changed only.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "db/database.h"

namespace headless {

/// What one operation of undo() met.
struct UndoneOperation {
    enum class Kind { kStep, kMark, kNothing };
    Kind kind = Kind::kNothing;
    std::wstring name; // of the command or group; empty for changes outside any
};

/// The journal of one drawing: changes in order, in groups that are undone together, with marks
/// between them. Every command is a group; groups nest.
class UndoJournal {
public:
    explicit UndoJournal(AcDbDatabase& database);
    UndoJournal(const UndoJournal&) = delete;
    UndoJournal& operator=(const UndoJournal&) = delete;

    // Called before a change.

    /// Keeps the object's state if it is the first change in this step.
    static void note(AcDbObject& object);
    static void noteNew(AcDbObject& object);
    void noteSettings();

    void beginCommand(std::wstring name);
    /// Also ends what groups the command left open.
    void endCommand();
    /// Opens the user's group, ending one that is open in the same command.
    void beginGroup();
    void endGroup();
    bool inGroup() const { return !open_.empty() && open_.back() == Opener::kUser; }
    void mark();
    int markCount() const;

    // Transactions nest; `depth` is 1 for the outermost. While any is open, changes are recorded
    // whether or not that is asked for.

    void beginTransaction(std::size_t depth);
    /// Leaves the changes to what the transaction was begun in; outside all groups and transactions
    /// they become a group. Without effect for one that began before the journal did.
    void endTransaction(std::size_t depth);
    /// Takes back, beyond redoing, what changed in the transaction; as far as it was not undone or
    /// forgotten already.
    void abortTransaction(std::size_t depth);

    /// Undoes steps, the latest first, but none from before the open group or transaction. A mark
    /// that is reached is taken away and counts as one. The answer ends with kNothing when there
    /// were too few.
    std::vector<UndoneOperation> undo(int count);
    /// Undoes everything since the last mark, and takes that away; everything, and false, when
    /// there is none. Nothing from before an open transaction.
    bool undoToMark();
    /// Reverses the last undo() or undoToMark() that nothing has changed since; false when there is
    /// none. Commands that are still at work cannot redo what they undid.
    bool redo();

    bool isRecording() const { return recording_; }
    void setRecording(bool recording);
    /// True when only the last operation can be undone.
    bool keepsOne() const { return keepsOne_; }
    void setKeepsOne(bool keeps) { keepsOne_ = keeps; }
    /// Forgets everything.
    void clear();
    /// Whether the user wants menus grouped; it changes nothing here.
    bool isAutomatic() const { return automatic_; }
    void setAutomatic(bool automatic) { automatic_ = automatic; }

private:
    /// An object's other state: of before the change, or after undoing of after it.
    struct Entry {
        AcDbObjectId id;
        std::unique_ptr<AcDbObject> state; // null: only the flag differs
        bool erased;
    };
    struct Changes {
        std::vector<Entry> entries;
        std::unique_ptr<DrawingSettings> settings;
    };
    struct GroupBegin {
        std::wstring name;
    };
    struct GroupEnd {};
    struct Mark {};
    struct TransactionBegin {
        std::size_t depth;
        bool inGroup;
    };
    using Item = std::variant<Changes, GroupBegin, GroupEnd, Mark, TransactionBegin>;
    using Items = std::vector<Item>;
    enum class Opener { kCommand, kUser };
    struct TakenBack {
        Items items;                      // the latest first
        std::vector<std::wstring> begins; // of open groups, the innermost first
        std::size_t ends = 0;             // of closed groups that begin before it
        // Groups that are cut in two cannot be put together again.
        bool isWhole() const { return begins.empty() && ends == 0; }
    };

    bool records() const { return recording_ || !transactions_.empty(); }
    /// The journal that records the object's changes; null when none does.
    static UndoJournal* recordingFor(const AcDbObject& object);
    Changes& growingChanges();
    void push(Item item);
    void pushEnd();
    /// Later changes are noted anew.
    void seal();
    bool inCommand() const;
    UndoneOperation undoOne(Items& taken);
    Item& takeLast(Items& taken);
    /// Undoes everything behind the last item of one of the kinds.
    template <class... Kinds>
    TakenBack takeBackTo();
    /// Begins and ends groups anew that were cut in two.
    void mendGroups(TakenBack& taken);
    /// Forgets that a transaction is open: where it began, else the end.
    std::deque<Item>::iterator closeTransaction(std::size_t depth);
    void keepForRedo(Items taken);
    void exchange(Changes& changes, bool backward);
    static void exchange(Entry& entry);

    AcDbDatabase& database_;
    std::deque<Item> done_;
    std::vector<Items> undone_;             // Each what one call took back, in the order it did.
    std::vector<Opener> open_;              // The groups that are open, the outermost first.
    std::vector<std::size_t> transactions_; // The depths of those that are open.
    bool growing_ = false;                  // The last of done_ takes more changes.
    bool recording_ = true;
    bool keepsOne_ = false;
    bool automatic_ = true;
};

} // namespace headless
