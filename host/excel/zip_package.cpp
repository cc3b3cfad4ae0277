#include "excel/zip_package.h"

#include <algorithm>

#include <zip.h>

#include "excel/workbook_error.h"

namespace headless::excel {
namespace {

constexpr std::size_t kMebibyte = std::size_t{1} << 20;
constexpr std::size_t kLargestPart = 512 * kMebibyte;
constexpr std::size_t kLargestPackage = 1024 * kMebibyte;
// Sheets pack 5 to 40 to 1; only parts beyond this size are measured.
constexpr std::size_t kPlainPart = 64 * kMebibyte;
constexpr std::size_t kHighestRatio = 200;

/// "xl/worksheets" and "../media/a.png" make "xl/media/a.png".
std::string resolved(const std::string& folder, std::string_view target) {
    std::string path = target.starts_with('/') ? std::string() : folder;
    while (!target.empty()) {
        const std::size_t slash = target.find('/');
        const std::string_view piece = target.substr(0, slash);
        target.remove_prefix(slash == std::string_view::npos ? target.size() : slash + 1);
        if (piece == "..") {
            const std::size_t last = path.rfind('/');
            path.erase(last == std::string::npos ? 0 : last);
        } else if (!piece.empty() && piece != ".") {
            if (!path.empty()) path += '/';
            path += piece;
        }
    }
    return path;
}

} // namespace

void ZipPackage::Close::operator()(zip* archive) const { zip_discard(archive); }

ZipPackage::ZipPackage(const std::string& path) {
    int error = 0;
    archive_.reset(zip_open(path.c_str(), ZIP_RDONLY, &error));
    if (archive_ == nullptr) throw WorkbookError("the file is damaged: its archive has no end");
}

ZipPackage::~ZipPackage() = default;

std::vector<std::string> ZipPackage::unreadParts() const {
    std::vector<std::string> names;
    const zip_int64_t count = zip_get_num_entries(archive_.get(), 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto number = static_cast<zip_uint64_t>(i);
        const char* name = zip_get_name(archive_.get(), number, 0);
        if (name != nullptr && !read_.contains(number)) names.emplace_back(name);
    }
    return names;
}

std::optional<std::string> ZipPackage::read(const std::string& part) {
    zip_stat_t about;
    if (zip_stat(archive_.get(), part.c_str(), ZIP_FL_NOCASE, &about) != 0) return std::nullopt;
    const std::size_t size = about.size;
    const bool absurd = size > kLargestPart || unpacked_ + size > kLargestPackage ||
                        (size > kPlainPart && size / kHighestRatio > about.comp_size);
    if (absurd) throw WorkbookError("the file would unpack to an absurd size");
    const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> file(
        zip_fopen_index(archive_.get(), about.index, 0), &zip_fclose);
    std::string bytes(size, '\0');
    if (file == nullptr ||
        zip_fread(file.get(), bytes.data(), size) != static_cast<zip_int64_t>(size)) {
        throw WorkbookError("the file is damaged in " + part);
    }
    unpacked_ += size;
    read_.insert(about.index);
    return bytes;
}

pugi::xml_document ZipPackage::readXml(const std::string& part) {
    pugi::xml_document document;
    const auto bytes = read(part);
    if (!bytes) return document;
    const pugi::xml_parse_result parsed = document.load_buffer(
        bytes->data(), bytes->size(), pugi::parse_default | pugi::parse_ws_pcdata_single);
    if (!parsed) throw WorkbookError("the file is damaged in " + part);
    return document;
}

std::vector<Relation> readRelations(ZipPackage& package, const std::string& part) {
    const std::size_t slash = part.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : part.substr(0, slash);
    const std::string name = slash == std::string::npos ? part : part.substr(slash + 1);
    const pugi::xml_document document =
        package.readXml((folder.empty() ? "" : folder + "/") + "_rels/" + name + ".rels");
    std::vector<Relation> relations;
    for (const pugi::xml_node& node : document.document_element().children()) {
        const std::string_view type = node.attribute("Type").value();
        Relation relation;
        relation.id = node.attribute("Id").value();
        relation.kind = type.substr(type.rfind('/') + 1);
        relation.external = std::string_view(node.attribute("TargetMode").value()) == "External";
        const char* target = node.attribute("Target").value();
        relation.target = relation.external ? target : resolved(folder, target);
        relations.push_back(std::move(relation));
    }
    return relations;
}

const Relation* findKind(const std::vector<Relation>& relations, std::string_view kind) {
    const auto found = std::ranges::find(relations, kind, &Relation::kind);
    return found == relations.end() ? nullptr : &*found;
}

const Relation* findId(const std::vector<Relation>& relations, std::string_view id) {
    const auto found = std::ranges::find(relations, id, &Relation::id);
    return found == relations.end() ? nullptr : &*found;
}

std::string_view localName(const char* name) {
    const std::string_view full = name;
    const std::size_t colon = full.find(':');
    return colon == std::string_view::npos ? full : full.substr(colon + 1);
}

pugi::xml_node child(const pugi::xml_node& node, std::string_view name) {
    for (const pugi::xml_node& candidate : node.children()) {
        if (localName(candidate.name()) == name) return candidate;
    }
    return {};
}

pugi::xml_attribute linkAttribute(const pugi::xml_node& node, std::string_view name) {
    for (const pugi::xml_attribute& candidate : node.attributes()) {
        if (std::string_view(candidate.name()).find(':') != std::string_view::npos &&
            localName(candidate.name()) == name) {
            return candidate;
        }
    }
    return {};
}

} // namespace headless::excel
