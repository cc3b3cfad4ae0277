#include "ed/save_commands.h"

#include <filesystem>
#include <optional>
#include <string>

#include "db/database.h"
#include "db/state.h"
#include "ed/command_line.h"
#include "ed/commands.h"
#include "ed/documents.h"
#include "ed/prompts.h"
#include "ed/state.h"
#include "win/code_page.h"
#include "win/native_path.h"

namespace headless {
namespace {

/// The name typed, or the document's own for Enter; nothing after Escape.
std::optional<std::wstring> askName(const AcApDocument& document) {
    constexpr int kSpacesAllowed = 1;
    const std::wstring own = document.isNamedDrawing() ? document.fileName() : L"";
    const std::wstring prompt =
        own.empty() ? L"\nSave drawing as: " : L"\nSave drawing as <" + own + L">: ";
    ACHAR typed[512];
    if (acedGetString(kSpacesAllowed, prompt.c_str(), typed, std::size(typed)) != RTNORM)
        return std::nullopt;
    const std::wstring name = *typed == L'\0' ? own : typed;
    if (name.empty()) return std::nullopt;
    return platformPath(std::filesystem::absolute(nativePath(name)).string());
}

bool save(AcApDocument& document, const std::wstring& file) {
    const SavedDrawing saved = DbState::current().save(*document.database(), file);
    if (!saved.text.empty()) acutPrintf(L"\n%ls", fromUtf8(saved.text).c_str());
    return saved.done;
}

void saveUnder(bool becomesOwn) {
    AcApDocument* const document = curDoc();
    if (document == nullptr) return;
    const auto name = askName(*document);
    if (!name || !save(*document, *name)) return;
    if (becomesOwn || !document->isNamedDrawing())
        EdState::current().documents.setFile(*document, *name);
}

void saveCopy() { saveUnder(false); }
void saveAs() { saveUnder(true); }

void quickSave() {
    AcApDocument* const document = curDoc();
    if (document != nullptr && document->isNamedDrawing())
        save(*document, document->fileName());
    else
        saveUnder(true);
}

} // namespace

void registerSaving(AcEdCommandStack& commands) {
    const auto add = [&](const wchar_t* name, AcRxFunctionPtr run) {
        commands.addCommand(L"CORE", name, name, ACRX_CMD_MODAL, run);
    };
    add(L"QSAVE", quickSave);
    add(L"SAVE", saveCopy);
    add(L"SAVEAS", saveAs);
}

} // namespace headless
