#include "db/object_groups.h"

#include <algorithm>
#include <numbers>

#include "db/block_table.h"
#include "db/database.h"
#include "db/dictionary.h"
#include "db/dxf_output.h"
#include "db/entity.h"
#include "db/opaque.h"
#include "db/residence.h"

namespace headless {
namespace {

std::wstring widened(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

std::wstring handleOf(Adesk::UInt64 handle) {
    ACHAR digits[17];
    AcDbHandle(handle).getIntoAsciiBuffer(digits);
    return digits;
}

constexpr bool isAngle(int code) { return code >= 50 && code <= 58; }

DataItem::Value wholeValue(int code, std::int64_t value) {
    switch (valueKind(code)) {
    case ValueKind::kInt32:
        return static_cast<std::int32_t>(value);
    case ValueKind::kInt64:
        return value;
    default:
        return static_cast<std::int16_t>(value);
    }
}

DataItem::Value valueOf(const DxfOutTag& tag) {
    using Kind = DxfOutTag::Kind;
    constexpr double kRadians = std::numbers::pi / 180.0;
    switch (tag.kind) {
    case Kind::kName:
        return widened(tag.chunk());
    case Kind::kReal:
        return isAngle(tag.code) ? tag.real * kRadians : tag.real;
    case Kind::kInteger:
    case Kind::kFlags: // of bits that nobody knows nothing is told
        return wholeValue(tag.code, tag.integer);
    case Kind::kHandle:
        if (valueKind(tag.code) == ValueKind::kName) return tag.id();
        return handleOf(tag.id().handle());
    case Kind::kNumber:
        return handleOf(tag.number);
    case Kind::kSymbol: {
        const auto* record = Residence::peek<AcDbSymbolTableRecord>(tag.id());
        return record == nullptr ? std::wstring() : record->nameOf();
    }
    case Kind::kBytes:
        return DataItem::Bytes(tag.bytes, tag.bytes + tag.length);
    case Kind::kText:
        break;
    }
    return std::wstring(tag.text());
}

/// The point that begins the groups, and how many of them make it.
AcGePoint3d pointAt(std::span<const DxfOutTag> tags, std::size_t& count) {
    constexpr int kNextAxis = 10;
    AcGePoint3d point;
    for (count = 0; count < 3 && count < tags.size(); ++count) {
        const auto axis = static_cast<unsigned>(count);
        if (tags[count].code != tags[0].code + kNextAxis * static_cast<int>(axis)) break;
        point[axis] = tags[count].real;
    }
    return point;
}

const AcDbBlockTableRecord* spaceOf(const AcDbObject& entity) {
    const auto* block = Residence::peek<AcDbBlockTableRecord>(entity.ownerId());
    return block != nullptr && block->isSpace() ? block : nullptr;
}

} // namespace

bool isOnSheet(const AcDbObject& entity) {
    const auto* space = spaceOf(entity);
    return space != nullptr && space->objectId() != entity.database()->modelSpaceId();
}

std::wstring layoutName(const AcDbObject& entity) {
    const auto* space = spaceOf(entity);
    if (space == nullptr) return {};
    const auto* layouts = Residence::peek<AcDbDictionary>(entity.database()->layoutDictionaryId());
    if (layouts != nullptr) {
        const auto& entries = layouts->entries();
        const auto at = std::ranges::find_if(
            entries, [&](const auto& entry) { return entry.id == space->layoutOf(); });
        if (at != entries.end()) return at->key;
    }
    return isOnSheet(entity) ? L"Layout1" : L"Model";
}

ObjectGroups::ObjectGroups(const AcDbObject& object) {
    constexpr int kMarker = 100;
    DxfOutFiler filer(object.database(), DrawingVersion::k2018);
    const DxfOutput& output = filer.write(object);
    for (const DxfOutPart& part : output.parts())
        codes_.insert(codes_.end(), part.codes.begin(), part.codes.end());

    items_ = {{-1, object.objectId()},
              {0, widened(dxfName(object))},
              {330, object.ownerId()},
              {5, handleOf(object.objectId().handle())}};
    const bool placed = AcDbEntity::cast(&object) != nullptr && spaceOf(object) != nullptr;
    bool toldPlace = !placed;
    for (auto tags = output.tags(); !tags.empty();) {
        const DxfOutTag& tag = tags.front();
        std::size_t count = 1;
        if (valueKind(tag.code) == ValueKind::kPoint) {
            items_.push_back({tag.code, pointAt(tags, count)});
            if (count == 2) flatCodes_.push_back(tag.code);
        } else {
            items_.push_back({tag.code, valueOf(tag)});
        }
        tags = tags.subspan(count);
        if (toldPlace || tag.code != kMarker) continue;
        items_.push_back({67, std::int16_t{isOnSheet(object) ? std::int16_t{1} : std::int16_t{0}}});
        items_.push_back({410, layoutName(object)});
        toldPlace = true;
    }
}

bool ObjectGroups::models(int code) const {
    return std::ranges::find(codes_, code) != codes_.end();
}

bool ObjectGroups::isFlat(int code) const {
    return std::ranges::find(flatCodes_, code) != flatCodes_.end();
}

} // namespace headless

resbuf* acdbEntGet(const ads_name name) {
    AcDbObjectId id;
    if (name == nullptr || acdbGetObjectId(id, name) != Acad::eOk || id.isErased()) return nullptr;
    const AcDbObject* object = headless::Residence::peek(id);
    if (object == nullptr) return nullptr;
    return headless::chainOf(headless::ObjectGroups(*object).items());
}
