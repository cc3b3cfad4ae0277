#include "headless/session.h"

#include <algorithm>
#include <istream>
#include <stdexcept>

#include "db/database.h"
#include "db/fault_hook.h"
#include "db/state.h"
#include "ed/state.h"
#include "excel/server.h"
#include "headless/leftovers.h"
#include "mfc/state.h"
#include "win/code_page.h"
#include "win/native_path.h"
#include "win/state.h"

namespace headless {
namespace {

bool sessionLives = false;

/// Refuses a second session, before any layer's state is made.
struct OnlySession {
    OnlySession() {
        if (sessionLives) throw std::logic_error("a process has one headless::Session at a time");
        sessionLives = true;
    }
    ~OnlySession() { sessionLives = false; }
    OnlySession(const OnlySession&) = delete;
    OnlySession& operator=(const OnlySession&) = delete;
};

} // namespace

/// Every layer's state, the lower ones first: the upper ones still use them when they end.
struct Session::Layers {
    OnlySession only;
    ProcessBaseline baseline;
    std::vector<std::string> violations; // Objects used without being open for it.
    WinState win;
    MfcState mfc;
    DbState db;
    EdState ed;
};

Session::Session(const SessionOptions& options) : layers_(std::make_unique<Layers>()) {
    layers_->win.ansiCodePage = options.ansiCodePage;
    layers_->win.oemCodePage = options.oemCodePage;
    layers_->ed.drawingArea.set(std::max(options.drawingAreaPixels.x, 1.0),
                                std::max(options.drawingAreaPixels.y, 1.0));
    if (options.spreadsheet) excel::install(layers_->win.automationServers);
    if (!options.automation) layers_->ed.application.endAutomation();
    layers_->ed.output.setSink(options.sink);
    layers_->db.writer = [](AcDbDatabase& db, const std::wstring& file) {
        const DxfWriteResult result = writeDxf(db, nativePath(file));
        SavedDrawing saved{static_cast<bool>(result), result.refusal};
        for (const std::string& note : result.notes)
            saved.text += (saved.text.empty() ? "" : "\n") + note;
        return saved;
    };
    layers_->db.openViolation = [this](const AcDbObject& object, const char* needed) {
        layers_->violations.push_back(toUtf8(object.isA()->name()) + " " +
                                      handleText(object.objectId().handle()) +
                                      " was used without being open for " + needed);
    };
}

Session::~Session() { FaultHook::set({}); }

void Session::setFaultHook(std::function<bool(const char* call)> hook) {
    FaultHook::set(std::move(hook));
}

OpenResult Session::openDrawing(const std::filesystem::path& path, const DxfReadOptions& options) {
    OpenResult result;
    auto database = std::make_unique<AcDbDatabase>(false, true);
    result.refusal = readDxf(*database, path, result.report, options).refusal;
    if (!result) return result;
    std::error_code ignored;
    const std::filesystem::path full = std::filesystem::absolute(path, ignored);
    result.document =
        layers_->ed.documents.open(std::move(database), fromUtf8(full.string()), true);
    return result;
}

AcApDocument* Session::newDrawing() {
    const std::size_t number = layers_->ed.documents.all().size() + 1;
    return layers_->ed.documents.open(std::make_unique<AcDbDatabase>(true, true),
                                      L"Drawing" + std::to_wstring(number) + L".dwg", false);
}

DxfWriteResult Session::saveDrawing(const std::filesystem::path& path) {
    AcDbDatabase* const db = database();
    if (db == nullptr) return {.refusal = path.string() + ": no drawing is open"};
    return writeDxf(*db, path);
}

void Session::closeDrawings() { layers_->ed.documents.closeAll(); }

AcDbDatabase* Session::database() const {
    const AcApDocument* document = layers_->ed.documents.current();
    return document == nullptr ? nullptr : document->database();
}

std::optional<std::string> Session::loadModule(const std::filesystem::path& path) {
    return layers_->ed.applications.load(path);
}

bool Session::run(std::wstring_view line) {
    layers_->ed.input.typeFirst(line);
    return layers_->ed.runner.runPending(false);
}

bool Session::runInput() { return layers_->ed.runner.runPending(true); }

bool Session::runScript(std::istream& script) {
    setLineReader([&script]() -> std::optional<std::wstring> {
        std::string line;
        do {
            if (!std::getline(script, line)) return std::nullopt;
            if (line.ends_with('\r')) line.pop_back();
        } while (line.starts_with(';'));
        return fromUtf8(line);
    });
    const bool allKnown = runInput();
    setLineReader({});
    return allKnown;
}

void Session::typeLine(std::wstring_view line) { layers_->ed.input.type(line); }

void Session::typePoint(const AcGePoint3d& point) { layers_->ed.input.add(point); }

void Session::typeEscape() { layers_->ed.input.add(EscapeKey{}); }

void Session::typeText(std::wstring_view text) {
    layers_->ed.input.add(WholeText{std::wstring(text)});
}

void Session::clickAt(const AcGePoint3d& point, const KeyModifiers& held) {
    layers_->ed.input.add(MouseClick{point, held});
}

void Session::clickPixel(const AcGePoint2d& pixel, const KeyModifiers& held) {
    layers_->ed.input.add(MouseClick{pixel, held});
}

void Session::pressKey(int virtualKey, const KeyModifiers& held) {
    layers_->ed.input.add(KeyPress{virtualKey, held});
}

void Session::setLineReader(std::function<std::optional<std::wstring>()> reader, bool shown) {
    if (!reader) return setReader({});
    setReader([reader = std::move(reader), shown]() -> std::optional<InputItem> {
        std::optional<std::wstring> line = reader();
        if (!line) return std::nullopt;
        return TypedLine{std::move(*line), shown};
    });
}

void Session::setReader(std::function<std::optional<InputItem>()> reader) {
    layers_->ed.input.setReader(std::move(reader));
}

std::vector<std::wstring> Session::offeredWords() const {
    if (layers_->ed.offeredKeywords != nullptr) return layers_->ed.offeredKeywords->names();
    return layers_->ed.runner.isQuiescent() ? layers_->ed.commands.globalNames()
                                            : std::vector<std::wstring>();
}

const std::wstring& Session::output() const { return layers_->ed.output.text(); }

void Session::clearOutput() { layers_->ed.output.clear(); }

std::vector<std::wstring> Session::messageBoxes() const {
    std::vector<std::wstring> texts;
    for (const MessageBoxRecord& box : layers_->win.messageBoxes) {
        texts.push_back(box.text);
    }
    return texts;
}

std::vector<std::string> Session::leftovers() const {
    std::vector<std::string> leftovers = findLeftovers(layers_->ed, layers_->db);
    if (const std::size_t strings = layers_->baseline.newStrings(); strings > 0) {
        leftovers.push_back(std::to_string(strings) + " automation strings were not freed");
    }
    if (const std::size_t arrays = layers_->baseline.newArrays(); arrays > 0) {
        leftovers.push_back(std::to_string(arrays) + " automation arrays were not destroyed");
    }
    const std::size_t own = layers_->ed.application.ownReferences();
    if (const std::size_t held = layers_->baseline.newAutomationReferences(); held > own) {
        leftovers.push_back(std::to_string(held - own) +
                            " references to automation objects were not released");
    }
    leftovers.insert(leftovers.end(), layers_->violations.begin(), layers_->violations.end());
    return leftovers;
}

} // namespace headless
