#include "ed/command_runner.h"

#include <cstdarg>
#include <optional>

#include "db/fault_hook.h"
#include "db/undo_journal.h"
#include "ed/prompt_answers.h"
#include "ed/state.h"
#include "win/casing.h"

namespace headless {

/// While it lives, the command counts as at work, holds the document's lock that its flags ask for,
/// and what it changes is one undo step.
class CommandRunner::Activation {
public:
    Activation(CommandRunner& runner, const AcEdCommand& command)
        : runner_(runner), document_(acDocManager->curDocument()) {
        runner_.active_.push_back(upperCased(command.globalName()));
        if ((command.commandFlags() & ACRX_CMD_NO_UNDO_MARKER) == 0 && document_ != nullptr)
            beginUndoStep(*document_);
        constexpr Adesk::Int32 kNoLock = ACRX_CMD_SESSION | ACRX_CMD_NOINTERNALLOCK;
        if ((command.commandFlags() & kNoLock) != 0) document_ = nullptr;
        locked_ =
            acDocManager->lockDocument(document_, lockMode(command.commandFlags())) == Acad::eOk;
    }
    ~Activation() {
        // Refused harmlessly when it has been closed.
        if (locked_) acDocManager->unlockDocument(document_);
        runner_.active_.pop_back();
        endUndoStep();
    }
    Activation(const Activation&) = delete;
    Activation& operator=(const Activation&) = delete;

private:
    static AcAp::DocLockMode lockMode(Adesk::Int32 flags) {
        if ((flags & ACRX_CMD_DOCREADLOCK) != 0) return AcAp::kRead;
        if ((flags & ACRX_CMD_DOCEXCLUSIVELOCK) != 0) return AcAp::kXWrite;
        return AcAp::kWrite;
    }

    void beginUndoStep(const AcApDocument& document) {
        if (UndoJournal* const journal = document.database()->undoJournal()) {
            journal->beginCommand(runner_.active_.back());
            undoDatabase_ = document.database();
        }
    }
    void endUndoStep() const {
        if (EdState::current().documents.ofDatabase(undoDatabase_) == nullptr) return; // Closed.
        if (UndoJournal* const journal = undoDatabase_->undoJournal()) journal->endCommand();
    }

    CommandRunner& runner_;
    AcApDocument* document_;
    bool locked_ = false;
    AcDbDatabase* undoDatabase_ = nullptr;
};

int CommandRunner::run(std::wstring_view name) {
    std::wstring_view bare = name;
    bool global = false;
    while (!bare.empty() &&
           std::wstring_view(L"._'").find(bare.front()) != std::wstring_view::npos) {
        global = global || bare.front() == L'_';
        bare.remove_prefix(1);
    }
    EdState& state = EdState::current();
    const AcEdCommand* command = state.commands.lookupCmd(std::wstring(bare).c_str(), global);
    if (command == nullptr) {
        state.output.print(L"\nUnknown command \"" + upperCased(bare) + L"\".  Press F1 for help.");
        return RTERROR;
    }
    // Copied: the command may take itself out of the registry.
    const AcRxFunctionPtr function = command->functionAddr();
    state.promptRules = {};
    const Activation activation(*this, *command);
    function();
    return RTNORM;
}

bool CommandRunner::runPending(bool fromReader) {
    EdState& state = EdState::current();
    bool allKnown = true;
    quitting_ = false;
    while (!quitting_ && (fromReader || !state.input.isEmpty())) {
        const InputAnswer answer = ask(L"\nCommand: ", true);
        if (std::holds_alternative<InputEnded>(answer.value)) break;
        if (std::holds_alternative<EscapeKey>(answer.value)) state.output.print(L"*Cancel*");
        const auto* text = std::get_if<std::wstring>(&answer.value);
        if (text == nullptr) continue; // Escape, or a click that nobody asked for.
        if (!text->empty()) last_ = *text;
        if (!last_.empty() && run(std::wstring(last_)) != RTNORM) allKnown = false;
    }
    return allKnown;
}

std::wstring CommandRunner::activeNames() const {
    std::wstring names;
    for (const std::wstring& name : active_) {
        if (!names.empty()) names += L'\'';
        names += name;
    }
    return names;
}

namespace {

InputItem textArgument(const ACHAR* text) {
    const std::wstring_view given = text == nullptr ? L"" : text;
    if (given == L"\\") return PauseForUser{};
    return WholeText{std::wstring(given)};
}

/// The item that an argument of the type stands for; nothing for a type that is no input.
std::optional<InputItem> takeArgument(int type, std::va_list& list) {
    switch (type) {
    case RTSTR:
        return textArgument(va_arg(list, const ACHAR*));
    case RTREAL:
    case RTANG:
    case RTORINT:
        return va_arg(list, double);
    case RTSHORT:
    case RTLONG:
        return va_arg(list, int);
    case RTPOINT:
    case RT3DPOINT: {
        const auto* point = va_arg(list, const double*);
        if (point == nullptr) return std::nullopt;
        return AcGePoint3d(point[0], point[1], type == RTPOINT ? 0.0 : point[2]);
    }
    default:
        return std::nullopt;
    }
}

std::optional<InputItem> itemOf(const resbuf& value) {
    const double* point = value.resval.rpoint;
    switch (value.restype) {
    case RTSTR:
        return textArgument(value.resval.rstring);
    case RTREAL:
    case RTANG:
    case RTORINT:
        return value.resval.rreal;
    case RTSHORT:
        return value.resval.rint;
    case RTLONG:
        return static_cast<int>(value.resval.rlong);
    case RTPOINT:
    case RT3DPOINT:
        return AcGePoint3d(point[0], point[1], value.restype == RTPOINT ? 0.0 : point[2]);
    default:
        return std::nullopt;
    }
}

/// Runs the commands that the items start, with the items as their only input.
int runWith(const char* call, std::vector<InputItem> items) {
    if (items.empty() || FaultHook::fails(call)) return RTERROR;
    EdState& state = EdState::current();
    const NestedInput nested(state.input, std::move(items));
    while (!state.input.isEmpty()) {
        const InputAnswer answer = ask(L"\nCommand: ", true);
        const auto* text = std::get_if<std::wstring>(&answer.value);
        if (text == nullptr || text->empty()) continue;
        if (state.runner.run(*text) != RTNORM) return RTERROR;
    }
    return RTNORM;
}

} // namespace
} // namespace headless

int acedCommandS(int rtype, ...) {
    std::vector<headless::InputItem> items;
    std::va_list list;
    va_start(list, rtype);
    bool valid = true;
    for (int type = rtype; type != RTNONE && type != 0; type = va_arg(list, int)) {
        auto item = headless::takeArgument(type, list);
        valid = item.has_value();
        if (!valid) break;
        items.push_back(std::move(*item));
    }
    va_end(list);
    if (!valid) return RTREJ;
    return headless::runWith("acedCommandS", std::move(items));
}

int acedCmdS(const resbuf* list) {
    std::vector<headless::InputItem> items;
    for (const resbuf* value = list; value != nullptr; value = value->rbnext) {
        if (value->restype == RTNONE) break;
        auto item = headless::itemOf(*value);
        if (!item) return RTREJ;
        items.push_back(std::move(*item));
    }
    return headless::runWith("acedCmdS", std::move(items));
}
