// What another program reads in a workbook file.
#pragma once

#include <array>
#include <cstdio>
#include <optional>
#include <set>
#include <string>

#include <sys/wait.h>

namespace test_support {

/// The lines that dump_workbook.py prints, run by the system's Python; nothing when its library is
/// not installed.
inline std::optional<std::set<std::string>> dumpWorkbook(const std::string& path) {
    const std::string command =
        "PYTHONIOENCODING=utf-8 /usr/bin/python3 " ORN_WORKBOOK_DUMP " '" + path + "' 2>&1";
    std::FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return std::nullopt;
    std::set<std::string> lines;
    std::string line;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        if (c != '\n') {
            line += static_cast<char>(c);
            continue;
        }
        lines.insert(line);
        line.clear();
    }
    const int status = pclose(pipe);
    constexpr int kMissing = 77;
    if (WIFEXITED(status) && WEXITSTATUS(status) == kMissing) return std::nullopt;
    return lines;
}

} // namespace test_support
