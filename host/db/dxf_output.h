// What an object writes itself to: the groups of its record in the order in which drawing files
// have them, as values. Whoever writes files turns them into bytes.
//
// A record that was read before is brought up to date part by part: in the part of that subclass
// the groups with the codes that the class models give way to what the object wrote; all others
// stay. So a class writes every value that it models, may leave out those that files take for
// granted, and need not know what else its records hold. Handle, owner, reactors, extension
// dictionary and most extended data are not the object's to write.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "db/dxf_filer.h"
#include "ge/point2d.h"
#include "ge/point3d.h"
#include "ge/vector3d.h"

class AcDbObject;

namespace headless {

/// Versions of drawing files, oldest first.
enum class DrawingVersion : std::uint8_t {
    kR12,
    kR13,
    kR14,
    k2000,
    k2004,
    k2007,
    k2010,
    k2013,
    k2018
};

/// One group. Texts and bytes are the object's own: good until it changes or is closed.
struct DxfOutTag {
    enum class Kind : std::uint8_t {
        kText, // wide characters as the object holds them, to be encoded
        kName, // ASCII that lives as long as the process: subclass markers
        kReal, // finite; angles are degrees already
        kInteger,
        kFlags,  // an integer of which the class knows the bits in `mask`; others stay as they are
        kHandle, // an object's handle; 0 for the null id
        kNumber, // a handle that is no object's id
        kSymbol, // the name of a table record; never the null id
        kBytes   // a chunk
    };

    std::int16_t code = 0;
    Kind kind = Kind::kText;
    union {
        std::uint32_t length = 0; // of texts, names and chunks
        std::uint32_t mask;
    };
    union {
        const wchar_t* characters = nullptr;
        const char* bytes;
        double real;
        std::int64_t integer;
        std::uint64_t number;
        AcDbStub* stub;
    };

    std::wstring_view text() const { return {characters, length}; }
    std::string_view chunk() const { return {bytes, length}; } // of names too
    AcDbObjectId id() const { return AcDbObjectId(stub); }
};

/// Groups that belong together: those of one subclass, or an application's extended data.
struct DxfOutPart {
    /// The subclass marker; empty before the first. An application's name is in the first group
    /// (1001) of its part.
    std::string_view name;
    /// Codes of the groups that the class models here. A group of another code is a starting value:
    /// for records that have no such group in this part.
    std::span<const std::int16_t> codes;
    bool whole = false;       // all groups are modelled, whatever their codes
    bool application = false; // extended data: replaces the application's, without more removes it
    std::size_t begin = 0;    // index of the first group, in versions with markers the marker
};

/// Collects the groups of one object after the other, reusing its memory.
class DxfOutput {
public:
    explicit DxfOutput(DrawingVersion version) : version_(version) {}

    DrawingVersion version() const { return version_; }
    bool since(DrawingVersion version) const { return version_ >= version; }

    std::span<const DxfOutTag> tags() const { return tags_; }
    /// The parts in order; each ends where the next one begins. An object may have two parts of the
    /// same name.
    std::span<const DxfOutPart> parts() const { return parts_; }
    std::span<const DxfOutTag> tagsOf(const DxfOutPart& part) const;

    void clear();

    /// Begins a part with its marker, which R12 does not have. Both arguments must be static.
    void subclass(std::string_view name, std::span<const std::int16_t> codes);
    /// The same for a subclass of which the object writes every group.
    void wholeSubclass(std::string_view name);
    /// Begins an application's extended data. The name must be static.
    void application(std::wstring_view name);

    // Values. The forms with `usual` leave out the value that files take for granted.
    void text(int code, std::wstring_view value);
    void text(int code, std::wstring_view value, std::wstring_view usual);
    void name(int code, std::string_view value);
    void real(int code, double value);
    void real(int code, double value, double usual);
    void integer(int code, std::int64_t value);
    void integer(int code, std::int64_t value, std::int64_t usual);
    void flags(int code, std::uint32_t bits, std::uint32_t mask);
    /// Radians; the group holds degrees.
    void angle(int code, double radians);
    void angle(int code, double radians, double usual);
    /// Groups `code`, `code` + 10 and + 20.
    void point(int code, const AcGePoint3d& point);
    void point(int code, const AcGeVector3d& vector);
    void point(int code, const AcGePoint2d& point);
    /// The object coordinates of a point of the world.
    void ocsPoint(int code, const AcGePoint3d& world, const AcGeVector3d& normal);
    /// Groups 210, 220, 230; left out for +z.
    void normal(const AcGeVector3d& normal);
    /// The null id is written as handle 0.
    void handle(int code, AcDbObjectId id);
    void handleNumber(int code, std::uint64_t handle);
    /// The record's name; nothing for the null id.
    void symbol(int code, AcDbObjectId record);
    void bytes(int code, std::string_view chunk);

    /// Keeps a value that texts or chunks refer to until clear().
    template <class T>
    const T& keep(T value) {
        auto kept = std::make_shared<const T>(std::move(value));
        kept_.push_back(kept);
        return *kept;
    }

private:
    DxfOutTag& add(int code, DxfOutTag::Kind kind);

    DrawingVersion version_;
    std::vector<DxfOutTag> tags_;
    std::vector<DxfOutPart> parts_;
    std::vector<std::shared_ptr<const void>> kept_;
};

/// The filer that objects write themselves through. It reads nothing.
class DxfOutFiler final : public AcDbDxfFiler {
public:
    DxfOutFiler(AcDbDatabase* database, DrawingVersion version);

    /// The object's groups, whether or not it is open; good until the next call.
    const DxfOutput& write(const AcDbObject& object);

    std::wstring text(const DxfTag& tag) const override;
    AcDbObjectId objectId(const DxfTag& handle) override;
    AcDbObjectId symbolId(AcRxClass* recordClass, const DxfTag& name) override;
    void report(const DxfTag& tag, std::string_view problem) override;

private:
    DxfOutput groups_;
};

/// Degrees of an angle, with few decimals where it was read from such.
[[nodiscard]] double degreesOf(double radians);

} // namespace headless
