// Real drawings with reference values.
//
// ORN_DRAWINGS names a folder of drawings with a NAME.oracle.json beside each NAME.dxf; without it
// tests on them are skipped.
#pragma once

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <json/json.h>

#include "win/casing.h"
#include "win/code_page.h"

namespace headless::testing {

inline std::string lower(const std::string& text) {
    std::wstring wide = fromUtf8(text);
    std::transform(wide.begin(), wide.end(), wide.begin(), headless::lower);
    return toUtf8(wide);
}

inline std::vector<std::filesystem::path> drawings() {
    std::vector<std::filesystem::path> files;
    const char* const folder = std::getenv("ORN_DRAWINGS");
    if (folder == nullptr) return files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (lower(entry.path().extension().string()) == ".dxf") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

inline ::testing::Message traced(std::string_view what, const Json::Value& name) {
    return ::testing::Message() << what << ' ' << name.asString();
}

/// A test for each drawing of the folder.
class ReferenceDrawings : public ::testing::TestWithParam<std::filesystem::path> {
protected:
    /// The drawing's reference values; empty when it has none.
    static std::optional<Json::Value> reference() {
        std::filesystem::path file = GetParam();
        std::ifstream stream(file.replace_extension(".oracle.json"));
        if (!stream) return std::nullopt;
        std::optional<Json::Value> values(std::in_place);
        stream >> *values;
        return values;
    }
};

/// The drawing's name with what test names cannot hold replaced.
inline std::string testName(const ::testing::TestParamInfo<std::filesystem::path>& instance) {
    std::string name = instance.param.stem().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char letter) { return std::isalnum(letter) == 0; },
        '_');
    return name;
}

// A macro because the test library has no other way to make a suite of tests for each parameter.
#define ORN_INSTANTIATE_FOR_DRAWINGS(SUITE)                                                        \
    GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SUITE);                                          \
    INSTANTIATE_TEST_SUITE_P(Folder, SUITE, ::testing::ValuesIn(drawings()), testName)

} // namespace headless::testing
