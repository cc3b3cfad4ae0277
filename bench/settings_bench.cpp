// Reading and setting keys of a settings file one by one; setting against GLib's GKeyFile.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#ifdef ORN_BENCH_GLIB
#include <glib.h>
#endif

#include "against.h"
#include "text/ini_file.h"
#include "win/state.h"

namespace {

constexpr int kKeys = 10'000;
constexpr int kSections = 10;

std::string keyName(int key) { return "key_" + std::to_string(key); }
std::string sectionName(int key) { return "section_" + std::to_string(key % kSections); }
std::wstring wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

/// A file of 10,000 keys in ten sections, removed at the end of the scope.
class SettingsFile {
public:
    explicit SettingsFile(const char* name)
        : path_(std::filesystem::temp_directory_path() / (std::to_string(getpid()) + name)) {
        std::ofstream file(path_);
        for (int section = 0; section < kSections; ++section) {
            file << '[' << sectionName(section) << "]\n";
            for (int key = section; key < kKeys; key += kSections)
                file << keyName(key) << '=' << key * 7919 << '\n';
        }
    }
    ~SettingsFile() { std::filesystem::remove(path_); }
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// Names as callers hold them, so that making them is not timed.
struct Names {
    std::vector<std::wstring> sections;
    std::vector<std::wstring> keys;

    Names() {
        for (int key = 0; key < kKeys; ++key) {
            sections.push_back(wide(sectionName(key)));
            keys.push_back(wide(keyName(key)));
        }
    }
};

void readTypedKeys(benchmark::State& state) {
    const headless::WinState session;
    const SettingsFile file("-read.ini");
    const CIniFile settings(file.path().wstring().c_str());
    const Names names;
    for ([[maybe_unused]] auto round : state) {
        for (std::size_t i = 0; i < kKeys; ++i) {
            int value = 0;
            if (!settings.GetValueOfKey(names.sections[i].c_str(), names.keys[i].c_str(), value)) {
                state.SkipWithError("a key is missing");
            }
            benchmark::DoNotOptimize(value);
        }
    }
    state.SetItemsProcessed(state.iterations() * kKeys);
}
BENCHMARK(readTypedKeys)->Unit(benchmark::kMillisecond);

#ifdef ORN_BENCH_GLIB
constexpr int kChanges = 1'000;

/// Of the keys that change, nine in ten are there and the tenth is new.
int changedKey(int change) { return change % 10 == 9 ? kKeys + change : change * 7 % kKeys; }

void setWithKeyFile(const std::string& path, int value) {
    for (int i = 0; i < kChanges; ++i) {
        GKeyFile* const file = g_key_file_new();
        g_key_file_load_from_file(file, path.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
        const int key = changedKey(i);
        g_key_file_set_integer(file, sectionName(key).c_str(), keyName(key).c_str(), value + i);
        if (g_key_file_save_to_file(file, path.c_str(), nullptr) == FALSE) std::abort();
        g_key_file_free(file);
    }
}

void setWithIniFile(const std::filesystem::path& path, int value) {
    CIniFile file(path.wstring().c_str());
    for (int i = 0; i < kChanges; ++i) {
        const int key = changedKey(i);
        if (!file.SetValueOfKey(wide(sectionName(key)).c_str(), wide(keyName(key)).c_str(),
                                value + i)) {
            std::abort();
        }
    }
}

void setKeysAgainstKeyFile(benchmark::State& state) {
    const headless::WinState session;
    const SettingsFile ours("-ours.ini");
    const SettingsFile theirs("-glib.ini");
    int value = 0;
    int baseline = 0;
    bench::against(
        state, [&] { setWithIniFile(ours.path(), value += kChanges); },
        [&] { setWithKeyFile(theirs.path().string(), baseline += kChanges); }, kChanges);
}
BENCHMARK(setKeysAgainstKeyFile)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(2);
#endif

} // namespace

BENCHMARK_MAIN();
