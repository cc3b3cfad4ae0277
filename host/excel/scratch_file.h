// A file of our own that goes when done.
#pragma once

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

#include "excel/workbook_error.h"

namespace headless::excel {

class ScratchFile {
public:
    ScratchFile() : path_((std::filesystem::temp_directory_path() / "workbook-XXXXXX").string()) {
        const int file = mkstemp(path_.data());
        if (file < 0) throw WorkbookError("no temporary file can be made");
        close(file);
    }
    ~ScratchFile() { std::remove(path_.c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string bytes() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::string path_;
};

} // namespace headless::excel
