#include "line_editor.h"

#include <histedit.h>
#include <signal.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <utility>

#include "win/casing.h"
#include "win/code_page.h"

namespace orn {
namespace {

constexpr int kLinesKept = 1000;

volatile sig_atomic_t interrupted = 0;

/// A command at work goes on to its next prompt, which is cancelled; who asks twice means it.
extern "C" void onInterrupt(int number) {
    if (interrupted != 0) {
        signal(number, SIG_DFL);
        raise(number);
    }
    interrupted = 1;
}

/// While it lives, Ctrl-C outside of the line editor is noted instead of ending the program.
class InterruptsNoted {
public:
    InterruptsNoted() {
        struct sigaction noted = {};
        noted.sa_handler = onInterrupt;
        noted.sa_flags = SA_RESTART;
        sigaction(SIGINT, &noted, &former_);
    }
    ~InterruptsNoted() { sigaction(SIGINT, &former_, nullptr); }
    InterruptsNoted(const InterruptsNoted&) = delete;
    InterruptsNoted& operator=(const InterruptsNoted&) = delete;

private:
    struct sigaction former_ = {};
};

void showNow(std::wstring_view text) { std::cout << headless::toUtf8(text) << std::flush; }

/// The letters that all words begin with, as the first of them writes them.
std::wstring commonStart(const std::vector<std::wstring>& words) {
    std::wstring start = words.front();
    for (const std::wstring& word : words) {
        const auto same = std::ranges::mismatch(start, word, [](wchar_t a, wchar_t b) {
            return headless::upper(a) == headless::upper(b);
        });
        start.erase(same.in1, start.end());
    }
    return start;
}

} // namespace

class LineEditor::Terminal {
public:
    explicit Terminal(std::filesystem::path historyFile);
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void print(std::wstring_view text);
    std::optional<headless::InputItem> read();

    Words words;

private:
    static Terminal& of(EditLine* editor) {
        void* self = nullptr;
        el_wget(editor, EL_CLIENTDATA, &self);
        return *static_cast<Terminal*>(self);
    }
    static wchar_t* promptOf(EditLine* editor) { return of(editor).prompt_.data(); }
    static unsigned char cancel(EditLine* editor, wint_t /*key*/) {
        of(editor).cancelled_ = true;
        return CC_NEWLINE;
    }
    static unsigned char complete(EditLine* editor, wint_t /*key*/) {
        return of(editor).completeWord();
    }
    unsigned char completeWord();
    void remember(const std::wstring& line);

    InterruptsNoted interrupts_;
    EditLine* editor_;
    HistoryW* history_;
    std::string historyFile_;
    std::wstring prompt_;      // What has been printed since the last line end.
    bool atLineStart_ = false; // The line that was read has ended the line on the screen.
    bool cancelled_ = false;
};

LineEditor::Terminal::Terminal(std::filesystem::path historyFile)
    : historyFile_(std::move(historyFile)) {
    // The editor counts columns by the letters of a locale; all that is printed is UTF-8.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    editor_ = el_init("orn", stdin, stdout, stderr);
    el_wset(editor_, EL_CLIENTDATA, this);
    el_wset(editor_, EL_PROMPT, &Terminal::promptOf);
    el_wset(editor_, EL_EDITOR, L"emacs");
    history_ = history_winit();
    HistEventW event;
    history_w(history_, &event, H_SETSIZE, kLinesKept);
    history_w(history_, &event, H_SETUNIQUE, 1);
    history_w(history_, &event, H_LOAD, historyFile_.c_str());
    el_wset(editor_, EL_HIST, history_w, history_);
    el_wset(editor_, EL_ADDFN, L"orn-cancel", L"Cancel the command", &Terminal::cancel);
    el_wset(editor_, EL_ADDFN, L"orn-complete", L"Complete the word", &Terminal::complete);
    el_wset(editor_, EL_BIND, L"^C", L"orn-cancel", nullptr);
    el_wset(editor_, EL_BIND, L"^I", L"orn-complete", nullptr);
    // While a line is edited Ctrl-C is a key like others.
    el_wset(editor_, EL_SETTY, L"-d", L"-isig", nullptr);
}

LineEditor::Terminal::~Terminal() {
    showNow(prompt_);
    std::error_code ignored;
    const std::filesystem::path folder = std::filesystem::path(historyFile_).parent_path();
    std::filesystem::create_directories(folder, ignored);
    HistEventW event;
    history_w(history_, &event, H_SAVE, historyFile_.c_str());
    history_wend(history_);
    el_end(editor_);
}

void LineEditor::Terminal::print(std::wstring_view text) {
    if (text.empty()) return;
    if (std::exchange(atLineStart_, false) && text.starts_with(L'\n')) text.remove_prefix(1);
    prompt_ += text;
    const std::size_t end = prompt_.rfind(L'\n') + 1; // 0 without one
    showNow(std::wstring_view(prompt_).substr(0, end));
    prompt_.erase(0, end);
}

std::optional<headless::InputItem> LineEditor::Terminal::read() {
    if (std::exchange(interrupted, 0) != 0) return headless::EscapeKey{};
    cancelled_ = false;
    el_resize(editor_);
    // By itself the editor shows the prompt first, and what is typed in between is not its own yet.
    el_wset(editor_, EL_PREP_TERM, 1);
    int count = 0;
    const wchar_t* const typed = el_wgets(editor_, &count);
    if (!cancelled_ && (typed == nullptr || count <= 0)) return std::nullopt;
    prompt_.clear();
    if (cancelled_) return headless::EscapeKey{};
    atLineStart_ = true;
    std::wstring line(typed, static_cast<std::size_t>(count));
    if (line.ends_with(L'\n')) line.pop_back();
    remember(line);
    return headless::TypedLine{std::move(line), true};
}

void LineEditor::Terminal::remember(const std::wstring& line) {
    if (line.empty()) return;
    HistEventW event;
    history_w(history_, &event, H_ENTER, line.c_str());
}

/// Completes the first word of the line as far as it is certain, or lists what it may be.
unsigned char LineEditor::Terminal::completeWord() {
    const LineInfoW* const line = el_wline(editor_);
    const std::wstring_view typed(line->buffer,
                                  static_cast<std::size_t>(line->cursor - line->buffer));
    // An underscore or a dot may stand before a command's name.
    const std::size_t start = std::min(typed.find_first_not_of(L"_.'"), typed.size());
    const std::wstring wanted = headless::upperCased(typed.substr(start));
    std::vector<std::wstring> fitting = words ? words() : std::vector<std::wstring>();
    std::erase_if(fitting, [&](const std::wstring& word) {
        return !headless::upperCased(word).starts_with(wanted);
    });
    if (fitting.empty()) return CC_REFRESH_BEEP;
    const std::wstring common = commonStart(fitting);
    if (fitting.size() > 1 && common.size() <= wanted.size()) {
        std::wstring list = L"\n";
        for (const std::wstring& word : fitting)
            list += word + L"  ";
        showNow(list + L"\n");
        return CC_REDISPLAY;
    }
    el_deletestr(editor_, static_cast<int>(wanted.size()));
    el_winsertstr(editor_, common.c_str());
    return CC_REFRESH;
}

LineEditor::LineEditor(const std::filesystem::path& history)
    : terminal_(std::make_unique<Terminal>(history)) {}

LineEditor::~LineEditor() = default;

void LineEditor::completeFrom(Words words) { terminal_->words = std::move(words); }

void LineEditor::print(std::wstring_view text) { terminal_->print(text); }

std::optional<headless::InputItem> LineEditor::read() { return terminal_->read(); }

std::filesystem::path historyFile() {
    const char* const state = std::getenv("XDG_STATE_HOME");
    const char* const home = std::getenv("HOME");
    // A folder that is not absolute counts as none.
    std::filesystem::path folder = state == nullptr ? "" : state;
    if (!folder.is_absolute())
        folder = std::filesystem::path(home == nullptr ? "/" : home) / ".local" / "state";
    return folder / "orn" / "history";
}

} // namespace orn
