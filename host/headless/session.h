// A session: everything the platform holds while a program works with drawings.
//
//     headless::Session session;
//     if (const auto opened = session.openDrawing("plan.dxf"); !opened) { ... opened.refusal ... }
//     session.loadModule("bin/OrnBoard.arx");
//     session.run(L"BOARDAREA");
//     std::puts(toUtf8(session.output()).c_str());
//
// A process has one session at a time; sessions one after the other see nothing of each other.
#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/reader.h"
#include "dxf/writer.h"
#include "ed/input_queue.h"
#include "ge/point2d.h"
#include "ge/point3d.h"

class AcApDocument;
class AcDbDatabase;

namespace headless {

struct SessionOptions {
    unsigned ansiCodePage = 936;
    unsigned oemCodePage = 936;
    /// Size of the program's drawing area; each coordinate at least 1.
    AcGePoint2d drawingAreaPixels{1600.0, 900.0};
    /// False: the program has no automation object.
    bool automation = true;
    /// False: the machine has no spreadsheet application.
    bool spreadsheet = true;
    /// Called with every piece of text that the command line prints.
    std::function<void(std::wstring_view)> sink = {};
};

/// How opening a drawing ended.
struct OpenResult {
    std::string refusal;  // One line when it failed: the file, the line, what is wrong.
    DxfReadReport report; // What was repaired or left out.
    AcApDocument* document = nullptr;

    explicit operator bool() const { return refusal.empty(); }
};

class Session {
public:
    /// Throws std::logic_error while another session lives.
    explicit Session(const SessionOptions& options = {});
    /// Closes the drawings and ends the modules.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Opens a drawing as a document of its own and makes it current.
    OpenResult openDrawing(const std::filesystem::path& path, const DxfReadOptions& options = {});
    /// A drawing as fresh as the platform makes it, current.
    AcApDocument* newDrawing();
    /// Writes the current drawing, see writeDxf; it stays open as the drawing that it is.
    DxfWriteResult saveDrawing(const std::filesystem::path& path);
    void closeDrawings();
    /// The current drawing, or null.
    AcDbDatabase* database() const;

    /// Loads a product module; the error names it and says what is wrong.
    [[nodiscard]] std::optional<std::string> loadModule(const std::filesystem::path& path);

    /// Types a line at the command prompt and runs what it starts; prompts are answered by the rest
    /// of the line, then by what was queued before, then by the reader. False when a command was
    /// unknown.
    bool run(std::wstring_view line);
    /// Runs what is queued and then the reader's lines, as a console does, until there are no more.
    bool runInput();
    /// Runs a script of UTF-8 lines: `;` starts a comment line, every line's end is Enter. It takes
    /// the reader's place, which is empty afterwards.
    bool runScript(std::istream& script);

    /// Queues a line, a point in user coordinates, or Escape for the prompts to come.
    void typeLine(std::wstring_view line);
    void typePoint(const AcGePoint3d& point);
    void typeEscape();
    /// Queues one answer whatever it holds, blanks included; the empty one is Enter.
    void typeText(std::wstring_view text);
    /// Queues a click with the left button on a point of the world, or on a pixel of the drawing
    /// area. When its turn comes it runs through the message filters as the platform's messages
    /// do, then answers the prompt that waits.
    void clickAt(const AcGePoint3d& point, const KeyModifiers& held = {});
    void clickPixel(const AcGePoint2d& pixel, const KeyModifiers& held = {});
    /// Queues a key by its virtual key code. Letters and digits become the answer that VK_RETURN or
    /// VK_SPACE ends; VK_ESCAPE is Escape; any other key is for the message filters alone.
    void pressKey(int virtualKey, const KeyModifiers& held = {});
    /// Where lines come from when nothing is queued; nothing returned means no more input.
    /// @param shown  the user sees the line already, as at a terminal.
    void setLineReader(std::function<std::optional<std::wstring>()> reader, bool shown = false);
    /// The same with items of any kind, such as a line or Escape.
    void setReader(std::function<std::optional<InputItem>()> reader);
    /// What could stand next where something is asked for now: the keywords of the prompt that
    /// waits, or the names of the commands where none is at work.
    std::vector<std::wstring> offeredWords() const;

    /// Everything that the command line printed since the start or since clearOutput().
    const std::wstring& output() const;
    void clearOutput();
    /// The texts of the message boxes shown, the oldest first.
    std::vector<std::wstring> messageBoxes() const;

    /// Asked at each call of the platform that can fail, by the call's name, whether it shall: see
    /// FaultHook. An empty function takes it away; the session's end does, too.
    void setFaultHook(std::function<bool(const char* call)> hook);

    /// What is still held and should not be, one line each: objects left open or highlighted,
    /// databases, selection sets, result buffers and automation strings never freed, message
    /// filters never removed, references to automation objects and document locks never given back;
    /// and objects that were used without being open.
    std::vector<std::string> leftovers() const;

private:
    struct Layers;
    std::unique_ptr<Layers> layers_;
};

} // namespace headless
