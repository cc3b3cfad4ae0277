// What objects write of themselves: as values to compare, and as a record that another object
// reads.
#pragma once

#include <cmath>
#include <cstdint>
#include <deque>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "db/drawing_roots.h"
#include "db/dxf_output.h"
#include "db/residence.h"
#include "db/symbol_table.h"
#include "win/code_page.h"

namespace test_support {

/// One group as files show it: a number, or a text with handles in hexadecimal.
struct Group {
    int code = 0;
    bool isNumber = false;
    double number = 0.0;
    std::string text;

    Group(int groupCode, double value) : code(groupCode), isNumber(true), number(value) {}
    Group(int groupCode, std::string value) : code(groupCode), text(std::move(value)) {}
    Group(int groupCode, const char* value) : Group(groupCode, std::string(value)) {}

    /// The same but for the last digits.
    friend bool operator==(const Group& a, const Group& b) {
        if (a.code != b.code || a.isNumber != b.isNumber) return false;
        constexpr double kRelative = 1e-12;
        const double allowed = kRelative * std::fmax(1.0, std::abs(b.number));
        return a.isNumber ? std::abs(a.number - b.number) <= allowed : a.text == b.text;
    }
    friend void PrintTo(const Group& group, std::ostream* out) {
        *out << group.code << '=';
        if (group.isNumber)
            *out << group.number;
        else
            *out << group.text;
    }
};

using WrittenGroups = std::vector<Group>;

inline std::string hexadecimal(std::uint64_t handle) {
    wchar_t digits[17];
    AcDbHandle(handle).getIntoAsciiBuffer(digits);
    return headless::toUtf8(digits);
}

inline Group shown(const headless::DxfOutTag& tag) {
    using Kind = headless::DxfOutTag::Kind;
    switch (tag.kind) {
    case Kind::kReal:
        return {tag.code, tag.real};
    case Kind::kInteger:
    case Kind::kFlags:
        return {tag.code, static_cast<double>(tag.integer)};
    case Kind::kHandle:
        return {tag.code, hexadecimal(tag.id().handle())};
    case Kind::kNumber:
        return {tag.code, hexadecimal(tag.number)};
    case Kind::kSymbol:
        return {
            tag.code,
            headless::toUtf8(headless::Residence::peek<AcDbSymbolTableRecord>(tag.id())->nameOf())};
    case Kind::kText:
        return {tag.code, headless::toUtf8(std::wstring(tag.text()))};
    case Kind::kName:
    case Kind::kBytes:
        break;
    }
    return {tag.code, std::string(tag.chunk())};
}

/// The groups but for extended data, which objects do not read themselves.
inline WrittenGroups shown(const headless::DxfOutput& output) {
    WrittenGroups groups;
    for (const headless::DxfOutPart& part : output.parts()) {
        if (part.application) break;
        for (const headless::DxfOutTag& tag : output.tagsOf(part))
            groups.push_back(shown(tag));
    }
    return groups;
}

/// Reads objects from groups that others wrote.
class WrittenReader : public AcDbDxfFiler {
public:
    explicit WrittenReader(AcDbDatabase& db) : AcDbDxfFiler(&db) {}

    void give(const WrittenGroups& groups) {
        texts_.clear();
        tags_.clear();
        for (const Group& group : groups) {
            headless::DxfTag& tag = tags_.emplace_back();
            tag.code = static_cast<std::int16_t>(group.code);
            if (group.isNumber) {
                tag.kind = headless::DxfTag::Kind::kReal;
                tag.number = group.number;
                continue;
            }
            const std::string& kept = texts_.emplace_back(group.text);
            tag.bytes = kept.data();
            tag.length = static_cast<std::uint32_t>(kept.size());
        }
        setRecord(tags_);
    }
    /// A new object of that class that read the groups.
    std::unique_ptr<AcDbObject> read(AcRxClass& kind, const WrittenGroups& groups) {
        give(groups);
        std::unique_ptr<AcDbObject> object(AcDbObject::cast(kind.create()));
        if (object != nullptr && object->dxfInFields(this) != Acad::eOk) object.reset();
        return object;
    }

    std::wstring text(const headless::DxfTag& tag) const override {
        return headless::fromUtf8({tag.bytes, tag.length});
    }
    AcDbObjectId objectId(const headless::DxfTag& handle) override {
        return AcDbObjectId(headless::Residence::announce(*database(), handle.handle()));
    }
    AcDbObjectId symbolId(AcRxClass* recordClass, const headless::DxfTag& name) override {
        return headless::DrawingRoots::table(*database(), recordClass)->findRecord(text(name));
    }
    void report(const headless::DxfTag& tag, std::string_view problem) override {
        reports.push_back(std::to_string(tag.code) + ": " + std::string(problem));
    }

    std::vector<std::string> reports;

private:
    std::vector<headless::DxfTag> tags_;
    std::deque<std::string> texts_;
};

} // namespace test_support
