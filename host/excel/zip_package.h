// The parts of a workbook file, which is a zip archive of XML and other files.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

struct zip;

namespace headless::excel {

/// Reads parts, within bounds: an archive that would unpack to absurd sizes is refused.
class ZipPackage {
public:
    /// Throws WorkbookError when the file cannot be opened or is no archive.
    explicit ZipPackage(const std::string& path);
    ~ZipPackage();
    ZipPackage(const ZipPackage&) = delete;
    ZipPackage& operator=(const ZipPackage&) = delete;

    /// The names of the parts that nobody has read so far.
    [[nodiscard]] std::vector<std::string> unreadParts() const;
    /// A part's bytes; nothing when there is none of that name. Throws WorkbookError when damaged.
    [[nodiscard]] std::optional<std::string> read(const std::string& part);
    /// A part as XML; empty when there is none. Throws WorkbookError when damaged.
    [[nodiscard]] pugi::xml_document readXml(const std::string& part);

private:
    struct Close {
        void operator()(zip* archive) const;
    };
    std::unique_ptr<zip, Close> archive_;
    std::set<std::uint64_t> read_; ///< Numbers of parts.
    std::size_t unpacked_ = 0;     ///< Bytes so far.
};

/// A link from one part to another.
struct Relation {
    std::string id;
    std::string kind;   ///< The last piece of its type: "worksheet", "styles", "image".
    std::string target; ///< The part's name in the archive; as written when it is external.
    bool external = false;
};

/// What the part links to.
[[nodiscard]] std::vector<Relation> readRelations(ZipPackage& package, const std::string& part);
[[nodiscard]] const Relation* findKind(const std::vector<Relation>& relations,
                                       std::string_view kind);
[[nodiscard]] const Relation* findId(const std::vector<Relation>& relations, std::string_view id);

// XML whose elements may carry any namespace prefix: names are compared behind the colon.

[[nodiscard]] std::string_view localName(const char* name);
[[nodiscard]] pugi::xml_node child(const pugi::xml_node& node, std::string_view name);
/// An attribute by its name behind the colon, such as "id" for "r:id".
[[nodiscard]] pugi::xml_attribute linkAttribute(const pugi::xml_node& node, std::string_view name);

} // namespace headless::excel
