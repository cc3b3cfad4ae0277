#include "excel/engine.h"

#include <algorithm>
#include <filesystem>

#include "excel/workbook_error.h"
#include "excel/workbook_files.h"

namespace headless::excel {
namespace {

class EmbeddedEngine final : public Engine {
public:
    std::unique_ptr<Workbook> open(const std::string& path) override { return readWorkbook(path); }

    void save(const Workbook& workbook, const std::string& path) override {
        std::string ending = std::filesystem::path(path).extension().string();
        std::ranges::transform(ending, ending.begin(), [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
        });
        if (ending != ".xlsx") {
            throw WorkbookError(path + " cannot be written: only .xlsx files can");
        }
        writeWorkbook(workbook, path);
    }
};

} // namespace

std::shared_ptr<Engine> embeddedEngine() { return std::make_shared<EmbeddedEngine>(); }

} // namespace headless::excel
