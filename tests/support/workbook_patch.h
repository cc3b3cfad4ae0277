// Workbook files as other programs might have written them.
#pragma once

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "excel/package_change.h"
#include "excel/zip_package.h"

namespace test_support {

/// Copies a workbook with one part changed.
/// @param text  in that part, which its first occurrence gives way to the other; null for a new
/// part.
inline void patchWorkbook(const std::string& path, const std::string& copy, const std::string& part,
                          const char* text, const std::string& instead) {
    std::filesystem::copy_file(path, copy, std::filesystem::copy_options::overwrite_existing);
    std::string bytes = instead;
    if (text != nullptr) {
        bytes = headless::excel::ZipPackage(copy).read(part).value_or("");
        const std::size_t at = bytes.find(text);
        ASSERT_NE(at, std::string::npos) << part << " does not hold " << text;
        bytes.replace(at, std::string_view(text).size(), instead);
    }
    headless::excel::PackageChange change(copy);
    change.replace(part.c_str(), bytes);
    change.commit();
}

} // namespace test_support
