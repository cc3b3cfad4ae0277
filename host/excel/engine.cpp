#include "excel/engine.h"

#include <cstdlib>

#include "excel/office_engine.h"
#include "excel/workbook_error.h"
#include "excel/workbook_files.h"

namespace headless::excel {
namespace {

class EmbeddedEngine final : public Engine {
public:
    std::unique_ptr<Workbook> open(const std::string& path) override { return readWorkbook(path); }

    std::vector<std::string> save(const Workbook& workbook, const std::string& path,
                                  FileKind kind) override {
        if (kind != FileKind::kXlsx) {
            throw WorkbookError(path + " cannot be written: it is of the kind " + endingOf(kind) +
                                kNeedsOffice);
        }
        writeWorkbook(workbook, path);
        return {};
    }
};

/// Stands in for an engine that there is not.
class NoEngine final : public Engine {
public:
    explicit NoEngine(const std::string& name)
        : refusal_("ORN_SPREADSHEET is \"" + name + "\"; it can be libreoffice or embedded") {}

    std::unique_ptr<Workbook> open(const std::string&) override { throw WorkbookError(refusal_); }
    std::vector<std::string> save(const Workbook&, const std::string&, FileKind) override {
        throw WorkbookError(refusal_);
    }

private:
    std::string refusal_;
};

} // namespace

std::shared_ptr<Engine> embeddedEngine() { return std::make_shared<EmbeddedEngine>(); }

std::shared_ptr<Engine> chosenEngine() {
    const char* set = std::getenv("ORN_SPREADSHEET");
    const std::string name = set == nullptr ? "" : set;
    if (name.empty() || name == "embedded") return embeddedEngine();
    if (name == "libreoffice") return officeEngine();
    return std::make_shared<NoEngine>(name);
}

} // namespace headless::excel
