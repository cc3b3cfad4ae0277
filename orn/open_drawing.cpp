#include "open_drawing.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "progress.h"
#include "win/code_page.h"

namespace orn {
namespace {

// A badly damaged drawing has thousands of repairs; the first ones tell what it suffers from.
constexpr std::size_t kRepairsShown = 20;

std::filesystem::path productModule() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "OrnBoard.arx";
}

void printRepairs(const std::filesystem::path& drawing, const headless::DxfReadReport& report) {
    const std::size_t shown = std::min(report.findings().size(), kRepairsShown);
    for (std::size_t i = 0; i < shown; ++i)
        std::cerr << drawing.string() << ": " << report.describe(report.findings()[i]) << '\n';
    if (report.count() > shown)
        std::cerr << drawing.string() << ": and " << report.count() - shown << " more repairs\n";
}

} // namespace

OpenDrawing::OpenDrawing(const std::filesystem::path& drawing,
                         std::function<void(std::wstring_view)> sink)
    : session_({.sink = std::move(sink)}) {
    if (const auto problem = session_.loadModule(productModule())) {
        std::cerr << "orn: " << *problem << '\n';
        return;
    }
    const headless::OpenResult result =
        session_.openDrawing(drawing, {.progress = Progress("opening")});
    printRepairs(drawing, result.report);
    if (!result) {
        std::cerr << "orn: " << result.refusal << '\n';
        return;
    }
    opened_ = true;
}

int OpenDrawing::finish() const {
    for (const std::wstring& message : session_.messageBoxes())
        std::cerr << "orn: " << headless::toUtf8(message) << '\n';
    const std::vector<std::string> leftovers = session_.leftovers();
    for (const std::string& leftover : leftovers)
        std::cerr << "orn: left behind: " << leftover << '\n';
    return leftovers.empty() ? kSuccess : kFailure;
}

} // namespace orn
