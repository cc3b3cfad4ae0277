// Which group of a record is which member of an object: a list of fields, read in one go.
//
//     field::read(*filer, filer->subclass("AcDbLine"), field::Point{10, start_},
//                 field::Point{11, end_}, field::Real{39, thickness_}, field::Normal{normal_});
//
// Each group goes to the first field that takes it. A callable of a tag that returns bool is a
// field too, for what only one class has. Members keep their values where the record has no group
// for them.
#pragma once

#include <cstdint>
#include <numbers>
#include <string>
#include <type_traits>
#include <vector>

#include "db/dxf_fields.h"

namespace headless::field {

/// A point or vector: groups `code`, `code` + 10 and + 20. One of two coordinates takes the third
/// group without a use for it.
template <class P>
struct Point {
    int code;
    P& value;

    bool take(const DxfTag& tag, AcDbDxfFiler& /*filer*/) {
        constexpr unsigned kAxes = sizeof(P) / sizeof(double);
        // One comparison turns most groups away.
        const auto step = static_cast<unsigned>(tag.code - code);
        if (step > 20 || step % 10 != 0) return false;
        if (step / 10 < kAxes) value[step / 10] = tag.real();
        return true;
    }
};

/// A list of points; the first coordinate begins the next one.
template <class P>
struct Points {
    int code;
    std::vector<P>& values;

    bool take(const DxfTag& tag, AcDbDxfFiler& filer) {
        if (tag.code == code) values.emplace_back();
        P unplaced;
        return Point<P>{code, values.empty() ? unplaced : values.back()}.take(tag, filer);
    }
};

/// The normal of an entity, made a unit vector.
struct Normal {
    AcGeVector3d& value;

    bool take(const DxfTag& tag, AcDbDxfFiler& filer) {
        return Point<AcGeVector3d>{210, value}.take(tag, filer);
    }
    void finish() { value = readNormal(value); }
};

/// A point that the record holds in the normal's object coordinate system. The normal must stand
/// before it in the list of fields.
struct OcsPoint {
    int code;
    AcGePoint3d& value;
    const AcGeVector3d& normal;

    bool take(const DxfTag& tag, AcDbDxfFiler& filer) {
        return Point<AcGePoint3d>{code, value}.take(tag, filer);
    }
    void finish() { value = ocsToWorld(value, normal); }
};

struct Real {
    int code;
    double& value;

    bool take(const DxfTag& tag, AcDbDxfFiler& /*filer*/) {
        if (tag.code != code) return false;
        value = tag.real();
        return true;
    }
};

/// Degrees in the record, radians in the object.
struct Angle {
    int code;
    double& value;

    bool take(const DxfTag& tag, AcDbDxfFiler& /*filer*/) {
        if (tag.code != code) return false;
        value = tag.real() * std::numbers::pi / 180.0;
        return true;
    }
};

/// A whole number, or an enumeration any value of which will do.
template <class T>
struct Integer {
    int code;
    T& value;

    bool take(const DxfTag& tag, AcDbDxfFiler& /*filer*/) {
        if (tag.code != code) return false;
        value = static_cast<T>(tag.integer());
        return true;
    }
};

struct Flag {
    int code;
    bool& value;

    bool take(const DxfTag& tag, AcDbDxfFiler& /*filer*/) {
        if (tag.code != code) return false;
        value = tag.flag();
        return true;
    }
};

/// One bit of a group; the fields behind it may take others of the same group.
struct Bit {
    int code;
    std::int64_t mask;
    bool& value;

    bool take(const DxfTag& tag, AcDbDxfFiler& /*filer*/) {
        if (tag.code == code) value = (tag.integer() & mask) != 0;
        return false;
    }
};

struct Text {
    int code;
    std::wstring& value;

    bool take(const DxfTag& tag, AcDbDxfFiler& filer) {
        if (tag.code != code) return false;
        value = filer.text(tag);
        return true;
    }
};

/// An object named by its handle.
struct Id {
    int code;
    AcDbObjectId& value;

    bool take(const DxfTag& tag, AcDbDxfFiler& filer) {
        if (tag.code != code) return false;
        value = filer.objectId(tag);
        return true;
    }
};

/// A table record named by its name.
struct Symbol {
    int code;
    AcRxClass* recordClass;
    AcDbObjectId& value;

    bool take(const DxfTag& tag, AcDbDxfFiler& filer) {
        if (tag.code != code) return false;
        value = filer.symbolId(recordClass, tag);
        return true;
    }
};

template <class Field>
bool take(Field& field, const DxfTag& tag, AcDbDxfFiler& filer) {
    if constexpr (std::is_invocable_r_v<bool, Field&, const DxfTag&>)
        return field(tag);
    else
        return field.take(tag, filer);
}

template <class Field>
void finish(Field& field) {
    if constexpr (requires { field.finish(); }) field.finish();
}

/// Reads the groups into the fields, then lets the fields finish in their order.
template <class... Fields>
void read(AcDbDxfFiler& filer, std::span<const DxfTag> tags, Fields&&... fields) {
    for (const DxfTag& tag : tags)
        static_cast<void>((take(fields, tag, filer) || ...));
    (finish(fields), ...);
}

} // namespace headless::field
