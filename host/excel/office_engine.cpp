#include "excel/office_engine.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include <dlfcn.h>
#include <sys/stat.h>

#include "excel/ods_authors.h"
#include "excel/ods_views.h"
#include "excel/workbook_error.h"
#include "excel/workbook_files.h"
#include "win/replace_file.h"

namespace headless::excel {
namespace {

namespace fs = std::filesystem;

/// The module's way to start an office; it stays loaded, since what it brings in has threads.
StartOffice starter() {
    Dl_info here{};
    dladdr(reinterpret_cast<const void*>(&officeEngine), &here);
    const fs::path module = fs::path(here.dli_fname).replace_filename(kOfficeModule);
    std::error_code ignored;
    if (!fs::exists(module, ignored)) {
        throw WorkbookError("this was built without LibreOffice: install libreoffice-calc-nogui "
                            "and libreoffice-dev, then build again");
    }
    void* handle = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* start = handle == nullptr ? nullptr : dlsym(handle, kStartOffice);
    if (start == nullptr) {
        const char* reason = dlerror();
        throw WorkbookError(std::string("LibreOffice is not installed: ") +
                            (reason == nullptr ? "its module is damaged" : reason));
    }
    return reinterpret_cast<StartOffice>(start);
}

/// A file in the office's folder for as long as the object lives.
class ExchangeFile {
public:
    ExchangeFile(const Office& office, const char* name, FileKind kind)
        : file_{office.folder() + "/" + name + endingOf(kind), kind} {}
    ~ExchangeFile() {
        std::error_code ignored;
        fs::remove(file_.path, ignored);
    }
    ExchangeFile(const ExchangeFile&) = delete;
    ExchangeFile& operator=(const ExchangeFile&) = delete;

    [[nodiscard]] const OfficeFile& file() const { return file_; }
    [[nodiscard]] std::string bytes() const {
        std::ifstream file(file_.path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    OfficeFile file_;
};

void checkSize(const Workbook& workbook, FileKind kind) {
    if (kind != FileKind::kXls) return;
    constexpr int kMostRows = 65536;
    constexpr int kMostColumns = 256;
    for (const auto& sheet : workbook.sheets) {
        const auto used = sheet->usedArea();
        if (used && (used->bottom > kMostRows || used->right > kMostColumns)) {
            throw WorkbookError("sheets of .xls files have 65536 rows and 256 columns, \"" +
                                sheet->name + "\" has more");
        }
    }
}

/// What files of the other kinds do not tell, as the office writes them.
std::vector<std::string> lostBeyondXlsx(const Workbook& workbook, FileKind kind) {
    std::vector<std::string> lost;
    const auto add = [&](bool there, const char* phrase) {
        if (there && std::ranges::find(lost, phrase) == lost.end()) lost.emplace_back(phrase);
    };
    add(std::ranges::any_of(workbook.names, &DefinedName::hidden), "hidden names");
    for (const auto& sheet : workbook.sheets) {
        const SheetView& view = sheet->view;
        const bool tellsViews = kind == FileKind::kOds;
        add(!tellsViews && (view.frozenRows > 0 || view.frozenColumns > 0), "frozen panes");
        add(!tellsViews && (view.zoom != 100 || !view.gridlines), "zoom and hidden grid lines");
        add(sheet->visibility == Visibility::kVeryHidden, "sheets hidden from users");
        add(!sheet->sumsBelow || !sheet->sumsRight, "sums before their groups");
        add(sheet->protection.has_value(), "fonts of Asian letters");
        add(kind == FileKind::kOds && sheet->protection, "what protected sheets allow");
        add(std::ranges::any_of(sheet->links,
                                [&](const Link& link) {
                                    const Cell* cell = sheet->find(link.area.top, link.area.left);
                                    return cell == nullptr ||
                                           !std::holds_alternative<std::string>(cell->value);
                                }),
            "links of cells without text");
        add(std::ranges::any_of(sheet->quiet, [](const auto& areas) { return !areas.empty(); }),
            "complaints that are not shown");
        add(std::ranges::any_of(sheet->links, [](const Link& link) { return !link.tip.empty(); }),
            "tips of links");
        for (const auto& [cell, comment] : sheet->comments)
            add(kind == FileKind::kXls && !comment.author.empty(), "authors of comments");
        sheet->forEach(wholeSheet(), [&](int, int, const Cell& cell) {
            add(workbook.formats.at(cell.format).fill.pattern > Pattern::kSolid, "fill patterns");
        });
    }
    return lost;
}

/// Takes over what the formulas came to in another copy of the workbook.
void takeResults(Workbook& workbook, Workbook& calculated) {
    const std::size_t sheets = std::min(workbook.sheets.size(), calculated.sheets.size());
    for (std::size_t i = 0; i < sheets; ++i) {
        workbook.sheets[i]->forEach(wholeSheet(), [&](int row, int column, Cell& cell) {
            if (cell.formula.empty()) return;
            const Cell* result = calculated.sheets[i]->find(row, column);
            if (result != nullptr) cell.value = result->value;
        });
    }
}

bool hasFormulas(const Workbook& workbook) {
    bool found = false;
    for (const auto& sheet : workbook.sheets) {
        sheet->forEach(wholeSheet(),
                       [&](int, int, const Cell& cell) { found = found || !cell.formula.empty(); });
    }
    return found;
}

/// Macros are nothing that a workbook of the kind .xlsx could hold, so its copy tells of none.
bool holdsMacros(const OfficeFile& source) {
    const std::string mark = source.kind == FileKind::kXls
                                 ? std::string("_\0V\0B\0A\0_\0P\0R\0O\0J\0E\0C\0T\0", 24)
                                 : std::string("Basic/script-lc.xml");
    std::ifstream file(source.path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    return bytes.find(mark) != std::string::npos;
}

/// The office writes truth values as formulas, areas to print as names of its own, too, and a blank
/// for nobody.
void useOwnWays(Workbook& workbook) {
    for (const auto& sheet : workbook.sheets) {
        sheet->forEach(wholeSheet(), [](int, int, Cell& cell) {
            if (cell.formula != "TRUE()" && cell.formula != "FALSE()") return;
            cell.value = cell.formula == "TRUE()";
            cell.formula.clear();
        });
        for (auto& [cell, comment] : sheet->comments)
            if (comment.author == " ") comment.author.clear();
    }
    std::erase_if(workbook.names, [](const DefinedName& name) {
        return name.name.starts_with("_xlnm_") || name.name.starts_with("Excel_BuiltIn_");
    });
}

/// A window that was never seen may show things as usual whatever the file says, and the copy of
/// the file may tell.
void takeViews(Workbook& workbook, const OfficeViews& views) {
    const std::size_t sheets = std::min(workbook.sheets.size(), views.sheets.size());
    for (std::size_t i = 0; i < sheets; ++i) {
        SheetView& view = workbook.sheets[i]->view;
        if (views.sheets[i] == SheetView()) continue;
        const bool gridlines = view.gridlines;
        view = views.sheets[i];
        view.gridlines = gridlines;
    }
    if (views.activeSheet > 0 && views.activeSheet < workbook.sheets.size())
        workbook.activeSheet = views.activeSheet;
}

/// Names the file in what goes wrong with it.
template <class Action>
auto about(const std::string& path, const char* what, Action action) {
    try {
        return action();
    } catch (const WorkbookError& error) {
        const std::string text = error.what();
        // The reader says so itself.
        if (text.starts_with(path)) throw;
        throw WorkbookError(path + " cannot be " + what + ": " + text);
    }
}

class OfficeEngine final : public Engine {
public:
    explicit OfficeEngine(OfficeOptions options) : options_(std::move(options)) {}

    std::unique_ptr<Workbook> open(const std::string& path) override {
        return about(path, "opened", [&] {
            (void)starter();
            const FileKind kind = kindOfContent(path);
            if (kind != FileKind::kXlsx) return openForeign({path, kind});
            auto workbook = readWorkbook(path);
            if (hasFormulas(*workbook)) takeResults(*workbook, *read({path, kind}));
            return workbook;
        });
    }

    std::vector<std::string> save(const Workbook& workbook, const std::string& path,
                                  FileKind kind) override {
        return about(path, "written", [&]() -> std::vector<std::string> {
            (void)starter();
            // What was calculated is in the model, and this kind needs nobody else.
            if (kind == FileKind::kXlsx) {
                writeWorkbook(workbook, path);
                return {};
            }
            checkSize(workbook, kind);
            const ExchangeFile source(office(), "source", FileKind::kXlsx);
            const ExchangeFile target(office(), "target", kind);
            writeWorkbook(workbook, source.file().path);
            office().convert(source.file(), target.file());
            if (kind == FileKind::kOds) {
                writeOdsViews(workbook, target.file().path);
                writeOdsAuthors(workbook, target.file().path);
            }
            struct stat status {};
            const int error = replaceFile(path, target.bytes(), Durability::kProcess, status);
            if (error != 0) throw WorkbookError(std::strerror(error));
            return lostBeyondXlsx(workbook, kind);
        });
    }

    void calculate(Workbook& workbook) override {
        if (!hasFormulas(workbook)) return;
        const ExchangeFile source(office(), "source", FileKind::kXlsx);
        writeWorkbook(workbook, source.file().path);
        takeResults(workbook, *read(source.file()));
    }

    void show(const Workbook& workbook, const std::string& name) override {
        const bool hasDesktop =
            std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr;
        if (!hasDesktop || withoutWindows_) return;
        // An office without windows is ended for one with them; nothing is kept in it.
        if (!std::exchange(options_.visible, true)) rest();
        try {
            const OfficeFile file{office().folder() + "/" + fs::path(name).stem().string() +
                                      ".xlsx",
                                  FileKind::kXlsx};
            writeWorkbook(workbook, file.path);
            office().show(file);
        } catch (const WorkbookError&) {
            // There are offices without windows; the work goes on in one that is not seen.
            withoutWindows_ = true;
            options_.visible = false;
            rest();
        }
    }

    void rest() override { office_.reset(); }

private:
    std::unique_ptr<Workbook> openForeign(const OfficeFile& file) {
        OfficeViews views;
        auto workbook = read(file, &views);
        useOwnWays(*workbook);
        takeViews(*workbook, views);
        if (file.kind == FileKind::kOds) takeOdsGridLines(*workbook, file.path);
        if (holdsMacros(file)) workbook->leftOut.emplace_back("macros");
        return workbook;
    }

    /// Reads what the office makes of a file.
    /// @param views  what its windows show, for who wants to know.
    std::unique_ptr<Workbook> read(const OfficeFile& file, OfficeViews* views = nullptr) {
        const ExchangeFile target(office(), "target", FileKind::kXlsx);
        const OfficeViews found = office().convert(file, target.file());
        if (views != nullptr) *views = found;
        return readWorkbook(target.file().path, LetterFonts::kScript);
    }

    Office& office() {
        if (office_ != nullptr && !office_->runs()) office_.reset();
        if (office_ == nullptr) office_.reset(starter()(options_));
        return *office_;
    }

    OfficeOptions options_;
    bool withoutWindows_ = false;
    std::unique_ptr<Office> office_;
};

} // namespace

std::shared_ptr<Engine> officeEngine(const OfficeOptions& options) {
    return std::make_shared<OfficeEngine>(options);
}

} // namespace headless::excel
