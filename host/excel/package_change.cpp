#include "excel/package_change.h"

#include <sstream>

#include <zip.h>

#include "excel/workbook_error.h"

namespace headless::excel {
namespace {

void check(bool done) {
    if (!done) throw WorkbookError("the temporary file cannot be changed");
}

} // namespace

PackageChange::PackageChange(const std::string& path) {
    int error = 0;
    archive_ = zip_open(path.c_str(), 0, &error);
    check(archive_ != nullptr);
}

PackageChange::~PackageChange() {
    if (archive_ != nullptr) zip_discard(archive_);
}

void PackageChange::replace(const char* part, const std::string& bytes) {
    zip_source_t* source = zip_source_buffer(archive_, bytes.data(), bytes.size(), 0);
    check(source != nullptr);
    const bool added =
        zip_file_add(archive_, part, source, ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8) >= 0;
    if (!added) zip_source_free(source);
    check(added);
}

void PackageChange::commit() {
    check(zip_close(archive_) == 0);
    archive_ = nullptr;
}

std::string xmlText(const pugi::xml_document& document) {
    std::ostringstream text;
    document.save(text, "", pugi::format_raw);
    return text.str();
}

} // namespace headless::excel
