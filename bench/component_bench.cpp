// Reading component styles against the JSON library's parsing of the same bytes.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <json/reader.h>

#include "against.h"
#include "component/component_func.h"

namespace {

constexpr int kStyles = 10'000;

/// As many styles as a large office's library has, in groups of types of ten styles.
std::map<CString, ComponentInfo> manyStyles() {
    std::map<CString, ComponentInfo> styles;
    for (int i = 0; i < kStyles; ++i) {
        ComponentInfo info;
        info.groupName.Format(L"楼板%d", i / 1000);
        info.typeName.Format(L"叠合板%d", i / 10 % 100);
        info.styleName.Format(L"60+%d", i % 10);
        info.attributeName = L"厚度";
        info.lineLayerInfo.layerName = L"PC-叠合板";
        info.hatchLayerInfo.layerName = L"PC-叠合板-填充";
        info.simpleLineLayerInfo.layerName = L"PC-叠合板-单线";
        styles[info.groupName + L"-" + info.typeName + L"-" + info.styleName] = info;
    }
    return styles;
}

/// The file with all styles, removed at the end.
class StylesOnDisk {
public:
    StylesOnDisk() { ComponentFunc::SaveComponentInfo(manyStyles(), path()); }
    ~StylesOnDisk() {
        std::error_code ignored;
        std::filesystem::remove(file_, ignored);
    }
    StylesOnDisk(const StylesOnDisk&) = delete;
    StylesOnDisk& operator=(const StylesOnDisk&) = delete;

    CString path() const { return file_.wstring().c_str(); }
    std::string bytes() const {
        std::ifstream file(file_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path file_ = std::filesystem::temp_directory_path() /
                                  ("orn-bench-" + std::to_string(getpid()) + ".json");
};

void readAgainstParse(benchmark::State& state) {
    const StylesOnDisk styles;
    const std::string bytes = styles.bytes();
    const auto read = [&] {
        if (ComponentFunc::GetAllComponentInfo(styles.path()).size() != kStyles)
            state.SkipWithError("styles are missing");
    };
    const auto parse = [&] {
        Json::Value document;
        Json::Reader reader;
        if (!reader.parse(bytes.data(), bytes.data() + bytes.size(), document, false))
            state.SkipWithError("the file does not parse");
    };
    bench::against(state, read, parse, kStyles);
}
BENCHMARK(readAgainstParse)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
