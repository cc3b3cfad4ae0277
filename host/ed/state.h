// What the editor holds for one session.
#pragma once

#include <optional>
#include <string>

#include "ed/application_object.h"
#include "ed/applications.h"
#include "ed/command_line.h"
#include "ed/command_runner.h"
#include "ed/commands.h"
#include "ed/documents.h"
#include "ed/drawing_view.h"
#include "ed/input_queue.h"
#include "ed/message_filters.h"
#include "ed/mouse_and_keys.h"
#include "ed/prompt_answers.h"
#include "ed/selection_sets.h"
#include "ed/system_variables.h"
#include "win/session_state.h"

namespace headless {

/// The session's side of the editor. The platform's calls read and change the current one.
class EdState : public SessionState<EdState> {
public:
    EdState();
    ~EdState();

    /// The newest living state; the process's own when no session made one.
    static EdState& current();

    CommandLineOutput output;
    InputQueue input;
    MessageFilters messageFilters;
    MouseAndKeys hands;
    PromptRules promptRules;                   ///< What acedInitGet set for the next prompt.
    const Keywords* offeredKeywords = nullptr; ///< Of the prompt that waits; null for none.
    std::optional<std::wstring> pickedText;    ///< The keyword that acedGetInput answers with.

    SelectionSets selections;
    SystemVariables variables;
    AcEdCommandStack commands;
    CommandRunner runner;
    Applications applications;
    AcRxDynamicLinker dynamicLinker;
    Documents documents;
    AcApDocManager documentManager;

    HostApplication application;
    AcGePoint2d drawingArea{1600.0, 900.0}; ///< Pixels.
    DrawingView drawingView;

    long displayUpdates = 0;     ///< How often the display was asked to show all changes.
    int dialogLibraryStarts = 0; ///< How often InitAcUiDLL has been called.

private:
    struct ProcessWide {};
    explicit EdState(ProcessWide);
};

} // namespace headless
