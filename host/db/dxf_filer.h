// What an object reads itself from: the groups of its record in a drawing file, already cut into
// codes and values, and the services that turn values into texts, ids and complaints.
#pragma once

#include <cassert>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "db/object_id.h"

class AcRxClass;

namespace headless {

class DxfOutput; // What objects write themselves to; see dxf_output.h.

/// One group of a drawing file. Text refers to the file's own bytes; nothing is copied or converted
/// before somebody asks for it.
struct DxfTag {
    enum class Kind : std::uint8_t {
        kText,    // ASCII files hold every value as text, in the file's code page
        kReal,    // binary files, and ASCII ones once the reader has looked the number over
        kInteger, // the same
        kBinary   // binary files only: a chunk of bytes
    };

    std::int16_t code = 0;
    Kind kind = Kind::kText;
    std::uint32_t length = 0;   // of the text or chunk, in bytes
    std::uint32_t position = 0; // the group code's line, counted from 1; in binary files its offset
    union {
        const char* bytes = nullptr;
        double number;
        std::int64_t whole;
    };

    /// The value's text without blanks around it; empty for kReal and kInteger.
    std::string_view text() const;
    /// The value as a number; malformed or out of range gives 0 (the reader reports those).
    double real() const;
    std::int64_t integer() const;
    /// The value as a hexadecimal handle; malformed gives 0.
    std::uint64_t handle() const;
    bool flag() const { return integer() != 0; }
};

/// The groups of one record that belong to the object itself: neither extended data (codes from
/// 1000), nor the groups in braces (102), nor an embedded object (after 101).
class DxfRecord {
public:
    explicit DxfRecord(std::span<const DxfTag> tags) : tags_(tags) {}

    std::span<const DxfTag> all() const { return tags_; }

    /// The groups after the subclass marker `name` (code 100) up to the next marker. A record
    /// without that marker, as old or careless files have it, is its own subclass: all groups.
    std::span<const DxfTag> subclass(std::string_view name) const;

    /// The first group of that code, or null.
    const DxfTag* find(int code) const;

private:
    std::span<const DxfTag> tags_;
};

} // namespace headless

/// Reads one object from its record, or writes it. Readers and writers of files derive from it;
/// objects see only this.
class AcDbDxfFiler {
public:
    virtual ~AcDbDxfFiler() = default;

    AcDbDatabase* database() const { return database_; }
    const headless::DxfRecord& record() const { return record_; }
    /// The record's groups of one subclass, see DxfRecord.
    std::span<const headless::DxfTag> subclass(std::string_view name) const {
        return record_.subclass(name);
    }

    /// The value as text, its code page and escapes (\U+XXXX, \M+nXXXX) resolved.
    virtual std::wstring text(const headless::DxfTag& tag) const = 0;
    /// The id behind a handle; an object read later is announced. Null for handle 0.
    virtual AcDbObjectId objectId(const headless::DxfTag& handle) = 0;
    /// The table record of that name (AcDbLayerTableRecord::desc() and so on). An undefined layer,
    /// linetype, text style or application is made with default properties and reported once; an
    /// undefined block gives the null id and is reported.
    virtual AcDbObjectId symbolId(AcRxClass* recordClass, const headless::DxfTag& name) = 0;
    /// Lists a repair or an oddity, naming the group's place in the file. `problem` in plain words.
    virtual void report(const headless::DxfTag& tag, std::string_view problem) = 0;

    /// Where an object puts its groups; for filers that write.
    headless::DxfOutput& output() const {
        assert(output_ != nullptr && "a filer that reads takes no groups");
        return *output_;
    }

protected:
    explicit AcDbDxfFiler(AcDbDatabase* database) : database_(database), record_({}) {}
    AcDbDxfFiler(const AcDbDxfFiler&) = delete;
    AcDbDxfFiler& operator=(const AcDbDxfFiler&) = delete;

    void setRecord(std::span<const headless::DxfTag> tags) { record_ = headless::DxfRecord(tags); }
    void setOutput(headless::DxfOutput* output) { output_ = output; }

private:
    AcDbDatabase* database_;
    headless::DxfOutput* output_ = nullptr;
    headless::DxfRecord record_;
};
