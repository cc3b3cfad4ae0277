#include "db/dxf_output.h"

#include <cmath>
#include <numbers>

#include "db/dxf_fields.h"
#include "db/object.h"

namespace headless {
namespace {

constexpr int kSubclassMarker = 100;
constexpr int kApplication = 1001;
constexpr int kNextAxis = 10;

} // namespace

double degreesOf(double radians) {
    const double degrees = radians * 180.0 / std::numbers::pi;
    // Radians do not come back as the very degrees they were read from: 30 would be written with
    // sixteen digits. Few decimals that mean the same angle to its last bits are what was read.
    constexpr double kDecimals = 1e8;
    constexpr double kLastBits = 1e-15;
    const double rounded = std::nearbyint(degrees * kDecimals) / kDecimals;
    return std::abs(rounded - degrees) <= kLastBits * std::abs(degrees) ? rounded : degrees;
}

DxfOutTag& DxfOutput::add(int code, DxfOutTag::Kind kind) {
    DxfOutTag& tag = tags_.emplace_back();
    tag.code = static_cast<std::int16_t>(code);
    tag.kind = kind;
    return tag;
}

std::span<const DxfOutTag> DxfOutput::tagsOf(const DxfOutPart& part) const {
    const bool last = &part == &parts_.back();
    const std::size_t end = last ? tags_.size() : (&part + 1)->begin;
    return tags().subspan(part.begin, end - part.begin);
}

void DxfOutput::clear() {
    tags_.clear();
    parts_.clear();
    kept_.clear();
}

void DxfOutput::subclass(std::string_view name, std::span<const std::int16_t> codes) {
    parts_.push_back({name, codes, false, false, tags_.size()});
    if (since(DrawingVersion::kR13)) this->name(kSubclassMarker, name);
}

void DxfOutput::wholeSubclass(std::string_view name) {
    subclass(name, {});
    parts_.back().whole = true;
}

void DxfOutput::application(std::wstring_view name) {
    parts_.push_back({{}, {}, true, true, tags_.size()});
    text(kApplication, name);
}

void DxfOutput::text(int code, std::wstring_view value) {
    DxfOutTag& tag = add(code, DxfOutTag::Kind::kText);
    tag.characters = value.data();
    tag.length = static_cast<std::uint32_t>(value.size());
}

void DxfOutput::text(int code, std::wstring_view value, std::wstring_view usual) {
    if (value != usual) text(code, value);
}

void DxfOutput::name(int code, std::string_view value) {
    DxfOutTag& tag = add(code, DxfOutTag::Kind::kName);
    tag.bytes = value.data();
    tag.length = static_cast<std::uint32_t>(value.size());
}

void DxfOutput::real(int code, double value) {
    // Files have no way to say what is no number.
    add(code, DxfOutTag::Kind::kReal).real = std::isfinite(value) ? value : 0.0;
}

void DxfOutput::real(int code, double value, double usual) {
    if (value != usual) real(code, value);
}

void DxfOutput::integer(int code, std::int64_t value) {
    add(code, DxfOutTag::Kind::kInteger).integer = value;
}

void DxfOutput::integer(int code, std::int64_t value, std::int64_t usual) {
    if (value != usual) integer(code, value);
}

void DxfOutput::flags(int code, std::uint32_t bits, std::uint32_t mask) {
    DxfOutTag& tag = add(code, DxfOutTag::Kind::kFlags);
    tag.mask = mask;
    tag.integer = bits;
}

void DxfOutput::angle(int code, double radians) { real(code, degreesOf(radians)); }

void DxfOutput::angle(int code, double radians, double usual) {
    if (radians != usual) angle(code, radians);
}

void DxfOutput::point(int code, const AcGePoint3d& point) {
    real(code, point.x);
    real(code + kNextAxis, point.y);
    real(code + 2 * kNextAxis, point.z);
}

void DxfOutput::point(int code, const AcGeVector3d& vector) {
    point(code, AcGePoint3d(vector.x, vector.y, vector.z));
}

void DxfOutput::point(int code, const AcGePoint2d& point) {
    real(code, point.x);
    real(code + kNextAxis, point.y);
}

void DxfOutput::ocsPoint(int code, const AcGePoint3d& world, const AcGeVector3d& normal) {
    point(code, worldToOcs(world, normal));
}

void DxfOutput::normal(const AcGeVector3d& normal) {
    constexpr int kNormal = 210;
    if (!isWorldNormal(normal)) point(kNormal, normal);
}

void DxfOutput::handle(int code, AcDbObjectId id) { add(code, DxfOutTag::Kind::kHandle).stub = id; }

void DxfOutput::handleNumber(int code, std::uint64_t handle) {
    add(code, DxfOutTag::Kind::kNumber).number = handle;
}

void DxfOutput::symbol(int code, AcDbObjectId record) {
    if (!record.isNull()) add(code, DxfOutTag::Kind::kSymbol).stub = record;
}

void DxfOutput::bytes(int code, std::string_view chunk) {
    DxfOutTag& tag = add(code, DxfOutTag::Kind::kBytes);
    tag.bytes = chunk.data();
    tag.length = static_cast<std::uint32_t>(chunk.size());
}

DxfOutFiler::DxfOutFiler(AcDbDatabase* database, DrawingVersion version)
    : AcDbDxfFiler(database), groups_(version) {
    setOutput(&groups_);
}

const DxfOutput& DxfOutFiler::write(const AcDbObject& object) {
    groups_.clear();
    object.dxfOutFields(this);
    return groups_;
}

std::wstring DxfOutFiler::text(const DxfTag& /*tag*/) const { return {}; }

AcDbObjectId DxfOutFiler::objectId(const DxfTag& /*handle*/) { return {}; }

AcDbObjectId DxfOutFiler::symbolId(AcRxClass* /*recordClass*/, const DxfTag& /*name*/) {
    return {};
}

void DxfOutFiler::report(const DxfTag& /*tag*/, std::string_view /*problem*/) {}

} // namespace headless
