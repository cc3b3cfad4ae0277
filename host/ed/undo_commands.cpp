#include "ed/undo_commands.h"

#include <map>
#include <string>

#include "db/database.h"
#include "db/state.h"
#include "db/undo_journal.h"
#include "ed/commands.h"
#include "ed/prompt_answers.h"
#include "ed/prompts.h"
#include "ed/state.h"

namespace headless {
namespace {

/// The keyword or other word that the user gives; `preset` for Enter or when there is no more
/// input.
std::wstring askWord(const ACHAR* prompt, const ACHAR* keywords, const ACHAR* preset) {
    constexpr std::size_t kLongest = 133;
    ACHAR word[kLongest];
    acedInitGet(0, keywords);
    return acedGetKword(prompt, word) == RTNORM ? word : preset;
}

void tell(const UndoneOperation& operation, bool isFirst) {
    CommandLineOutput& output = EdState::current().output;
    switch (operation.kind) {
    case UndoneOperation::Kind::kStep:
        output.print(L"\n" + (operation.name.empty() ? L"Undone" : operation.name));
        break;
    case UndoneOperation::Kind::kMark:
        output.print(L"\nMark encountered");
        break;
    case UndoneOperation::Kind::kNothing:
        output.print(isFirst ? L"\nNothing to undo" : L"\nEverything has been undone");
        break;
    }
}

void undo(UndoJournal& journal, int count) {
    bool isFirst = true;
    for (const UndoneOperation& operation : journal.undo(count)) {
        tell(operation, isFirst);
        isFirst = false;
    }
}

/// Without a mark the user is asked; a script that says no more agrees.
void undoToMark(UndoJournal& journal) {
    if (journal.markCount() > 0) {
        journal.undoToMark();
        return;
    }
    const InputAnswer answer = ask(L"\nThis will undo everything. OK? <Y>: ", true);
    const auto* const word = std::get_if<std::wstring>(&answer.value);
    const bool declines = word != nullptr && Keywords(L"No").match(*word).has_value();
    if (declines || std::holds_alternative<EscapeKey>(answer.value)) return;
    journal.undoToMark();
    EdState::current().output.print(L"\nEverything has been undone");
}

void setAutomatic(UndoJournal& journal) {
    const std::wstring answer =
        askWord(L"\nEnter UNDO Auto mode [ON/OFF] <ON>: ", L"ON OFF", L"ON");
    journal.setAutomatic(answer == L"ON");
}

void control(UndoJournal& journal) {
    const std::wstring answer =
        askWord(L"\nEnter an UNDO control option [All/None/One] <All>: ", L"All None One", L"All");
    if (answer == L"None") journal.clear();
    journal.setRecording(answer != L"None");
    journal.setKeepsOne(answer == L"One");
}

/// The current drawing's; null, having told so, when nothing is recorded.
UndoJournal* recordingJournal() {
    const AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    UndoJournal* const journal = db == nullptr ? nullptr : db->undoJournal();
    if (journal != nullptr && journal->isRecording()) return journal;
    EdState::current().output.print(L"\nUndo is turned off");
    return nullptr;
}

void runOption(const std::wstring& option) {
    const AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    if (option == L"Control" && db != nullptr && db->undoJournal() != nullptr) {
        control(*db->undoJournal());
        return;
    }
    UndoJournal* const journal = recordingJournal();
    if (journal == nullptr) return;
    static const std::map<std::wstring, void (*)(UndoJournal&)> kOptions = {
        {L"Auto", setAutomatic},
        {L"Back", undoToMark},
        {L"BEgin", [](UndoJournal& j) { j.beginGroup(); }},
        {L"End", [](UndoJournal& j) { j.endGroup(); }},
        {L"Mark", [](UndoJournal& j) { j.mark(); }},
    };
    kOptions.at(option)(*journal);
}

void undoCommand() {
    acedInitGet(RSG_NOZERO | RSG_NONEG, L"Auto Control BEgin End Mark Back");
    int count = 1;
    const int answer = acedGetInt(L"\nEnter the number of operations to undo or "
                                  L"[Auto/Control/BEgin/End/Mark/Back] <1>: ",
                                  &count);
    if (answer == RTKWORD) {
        runOption(*EdState::current().pickedText);
    } else if (answer == RTNORM || answer == RTNONE) {
        if (UndoJournal* const journal = recordingJournal()) undo(*journal, count);
    }
}

void undoOneCommand() {
    if (UndoJournal* const journal = recordingJournal()) undo(*journal, 1);
}

void redoCommand() {
    UndoJournal* const journal = recordingJournal();
    if (journal != nullptr && !journal->redo())
        EdState::current().output.print(L"\nNothing to redo");
}

} // namespace

void addUndoCommands(AcEdCommandStack& commands) {
    constexpr Adesk::Int32 kFlags = ACRX_CMD_TRANSPARENT | ACRX_CMD_NO_UNDO_MARKER;
    commands.addCommand(L"CORE", L"UNDO", L"UNDO", kFlags, undoCommand);
    commands.addCommand(L"CORE", L"U", L"U", kFlags, undoOneCommand);
    commands.addCommand(L"CORE", L"REDO", L"REDO", kFlags, redoCommand);
}

} // namespace headless
