// Workbook files as other programs might have written them.
#pragma once

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

namespace test_support {

/// Copies a workbook with one part changed as patch_workbook.py tells.
/// @param text  null for a new part.
inline void patchWorkbook(const std::string& path, const std::string& copy, const std::string& part,
                          const char* text, const std::string& instead) {
    std::string command = "python3 " ORN_WORKBOOK_PATCH;
    for (const std::string& argument :
         {path, copy, part, std::string(text == nullptr ? "" : text), instead})
        command += " '" + argument + "'";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
}

} // namespace test_support
