// What objects write of themselves: as values to compare, and as a record that another object
// reads.
#pragma once

#include <charconv>
#include <cmath>
#include <cstdint>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "db/dxf_output.h"
#include "db/resbuf.h"
#include "support/group_filer.h"

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

/// "40=2.5|10=1,2,3|1=text" and so on, a point with its three codes.
inline WrittenGroups groups(const std::string& list) {
    WrittenGroups all;
    std::istringstream parts(list);
    for (std::string part; std::getline(parts, part, '|');) {
        const std::size_t sign = part.find('=');
        int code = std::stoi(part.substr(0, sign));
        const std::string value = part.substr(sign + 1);
        if (headless::valueKind(code) == headless::ValueKind::kText || code == 5 || code == 1001 ||
            headless::valueKind(code) == headless::ValueKind::kName || code == 100 || code == 390) {
            all.emplace_back(code, value);
            continue;
        }
        std::istringstream numbers(value);
        for (std::string number; std::getline(numbers, number, ','); code += 10)
            all.emplace_back(code, std::stod(number));
    }
    return all;
}

inline std::string hexadecimal(std::uint64_t handle) {
    wchar_t digits[17];
    AcDbHandle(handle).getIntoAsciiBuffer(digits);
    return headless::toUtf8(digits);
}

inline Group groupOf(const headless::DxfOutTag& tag) {
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
inline WrittenGroups groupsOf(const headless::DxfOutput& output) {
    WrittenGroups groups;
    for (const headless::DxfOutPart& part : output.parts()) {
        if (part.application) break;
        for (const headless::DxfOutTag& tag : output.tagsOf(part))
            groups.push_back(groupOf(tag));
    }
    return groups;
}

/// The groups as a file holds them.
inline Groups asRecord(const WrittenGroups& groups) {
    Groups record;
    for (const Group& group : groups) {
        char digits[32];
        const auto end = std::to_chars(std::begin(digits), std::end(digits), group.number).ptr;
        record.emplace_back(group.code, group.isNumber ? std::string(digits, end) : group.text);
    }
    return record;
}

/// A new object of that class that read the groups; null when it refused.
inline std::unique_ptr<AcDbObject> readWritten(GroupFiler& filer, const AcRxClass& kind,
                                               const WrittenGroups& groups) {
    filer.give(asRecord(groups));
    std::unique_ptr<AcDbObject> object(AcDbObject::cast(kind.create()));
    if (object != nullptr && object->dxfInFields(&filer) != Acad::eOk) object.reset();
    return object;
}

} // namespace test_support
