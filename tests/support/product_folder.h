// A product folder of a test's own: the board module in bin/, its data files in prg/.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <windows.h>

#include "support/temporary_folder.h"

namespace test_support {

/// Takes the place of the product's own while it is the one whose module was loaded; needs the
/// session's or at least the system's state.
class ProductFolder {
public:
    ProductFolder() {
        for (const char* name : {"bin", "prg"})
            std::filesystem::create_directory(path() / name);
        const std::filesystem::path module = path() / "bin" / "OrnBoard.arx";
        std::filesystem::copy_file(ORN_TEST_MODULE, module);
        EXPECT_NE(LoadLibraryW(module.wstring().c_str()), nullptr);
    }

    const std::filesystem::path& path() const { return folder_.path(); }

    void putData(const char* name, const std::string& text) const {
        std::ofstream(path() / "prg" / name, std::ios::binary) << text;
    }

private:
    TemporaryFolder folder_;
};

} // namespace test_support
