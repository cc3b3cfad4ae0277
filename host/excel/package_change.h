// New bytes for parts of a workbook file.
#pragma once

#include <string>

#include <pugixml.hpp>

struct zip;

namespace headless::excel {

/// What the archive holds else stays; so it does altogether unless the change is committed.
class PackageChange {
public:
    /// Throws WorkbookError, as all members do, when the file cannot be changed.
    explicit PackageChange(const std::string& path);
    ~PackageChange();
    PackageChange(const PackageChange&) = delete;
    PackageChange& operator=(const PackageChange&) = delete;

    /// @param bytes  must live until the commit.
    void replace(const char* part, const std::string& bytes);
    void commit();

private:
    zip* archive_ = nullptr;
};

[[nodiscard]] std::string xmlText(const pugi::xml_document& document);

} // namespace headless::excel
