// Wildcard matching against fnmatch, splitting against std::string::find.
#include <fnmatch.h>

#include <string>
#include <vector>

#include "against.h"
#include "text/glob.h"
#include "text/splitting.h"

namespace {

const std::vector<std::string> kNames = {
    "WALL-INNER-200.dwg",  "board_outline_2026.DWG",
    "DBS1-67-3018-22.dxf", "x$0$A-OPENING",
    "stairs.bak",          "plan of the third floor, north wing, revision 12.dwg"};
const std::vector<std::string> kPatterns = {"*.dwg", "WALL-*-200.*", "*$0$*", "[a-s]*.b?k",
                                            "DBS?-*-30[0-9][0-9]-*"};

template <class Match>
int countMatches(Match match) {
    int matches = 0;
    for (const std::string& pattern : kPatterns)
        for (const std::string& name : kNames)
            matches += match(pattern, name) ? 1 : 0;
    return matches;
}

void stringmatchAgainstFnmatch(benchmark::State& state) {
    constexpr int kRounds = 1000;
    const auto repeated = [](auto match) {
        return [match] {
            for (int i = 0; i < kRounds; ++i)
                benchmark::DoNotOptimize(countMatches(match));
        };
    };
    bench::against(state, repeated([](const std::string& pattern, const std::string& name) {
                       return String::stringmatch(pattern.c_str(), name.c_str(), 0) == 1;
                   }),
                   repeated([](const std::string& pattern, const std::string& name) {
                       return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
                   }),
                   kRounds * static_cast<double>(kPatterns.size() * kNames.size()));
}
BENCHMARK(stringmatchAgainstFnmatch)->UseManualTime();

std::string tenMegabytesOfFields() {
    std::string text;
    for (int i = 0; text.size() < 10'000'000; ++i)
        text += std::to_string(i * 7919) + ",";
    return text;
}

std::vector<std::string> splitWithFind(const std::string& text) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t end = text.find(','); end != std::string::npos; end = text.find(',', begin)) {
        pieces.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    pieces.push_back(text.substr(begin));
    return pieces;
}

void splitAgainstFind(benchmark::State& state) {
    const std::string text = tenMegabytesOfFields();
    bench::against(
        state, [&] { benchmark::DoNotOptimize(String::Split(text, ",")); },
        [&] { benchmark::DoNotOptimize(splitWithFind(text)); });
}
BENCHMARK(splitAgainstFind)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
