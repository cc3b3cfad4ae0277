// Times pictures of generated plans, and a converter of another program on the same file.
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <variant>

#include "against.h"
#include "dxf_drawings.h"
#include "headless/session.h"
#include "view/picture.h"

namespace {

using std::filesystem::path;

std::string picture(const path& file, headless::PictureFormat format) {
    headless::Session session;
    if (!session.openDrawing(file)) throw std::runtime_error("cannot be opened");
    headless::PictureOptions options;
    options.format = format;
    return std::get<std::string>(headless::drawPicture(*session.database(), options));
}

/// From the file to the bytes of the picture.
void draw(benchmark::State& state, headless::PictureFormat format) {
    const path& file =
        bench::drawing(bench::Content::kMixed, static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(picture(file, format));
}

/// The other program is run as its users run it, so its start counts: it takes a tenth of a second.
void againstLibreCad(benchmark::State& state) {
    if (std::system("command -v librecad >/dev/null") != 0)
        return state.SkipWithError("librecad is not installed");
    const path& file =
        bench::drawing(bench::Content::kMixed, static_cast<std::size_t>(state.range(0)));
    path theirs = file;
    theirs.replace_extension(".pdf");
    const std::string command = "QT_QPA_PLATFORM=offscreen librecad dxf2pdf -a -p 420x297 '" +
                                file.string() + "' >/dev/null 2>&1";
    bench::against(
        state, [&] { benchmark::DoNotOptimize(picture(file, headless::PictureFormat::kPdf)); },
        [&] {
            if (std::system(command.c_str()) != 0 || !std::filesystem::exists(theirs))
                throw std::runtime_error("librecad refuses");
            std::filesystem::remove(theirs);
        });
}

BENCHMARK_CAPTURE(draw, png, headless::PictureFormat::kPng)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(draw, pdf, headless::PictureFormat::kPdf)
    ->Arg(10'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(againstLibreCad)
    ->Arg(10'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

} // namespace

BENCHMARK_MAIN();
