#include "db/xdata.h"

#include <algorithm>
#include <array>
#include <cwctype>
#include <map>

#include "db/database.h"
#include "db/dxf_code.h"
#include "db/object_data.h"
#include "db/record_archive.h"
#include "db/resbuf.h"
#include "db/residence.h"
#include "db/state.h"
#include "win/casing.h"
#include "win/code_page.h"

namespace headless {
namespace {

constexpr int kText = AcDb::kDxfXdAsciiString;
constexpr int kApplication = AcDb::kDxfRegAppName;
constexpr int kBrace = AcDb::kDxfXdControlString;
constexpr int kHandle = AcDb::kDxfXdHandle;

bool isHandle(std::wstring_view text) {
    constexpr std::size_t kLongest = 16;
    return !text.empty() && text.size() <= kLongest &&
           std::all_of(text.begin(), text.end(),
                       [](wchar_t digit) { return digit < 0x80 && std::iswxdigit(digit) != 0; });
}

/// Names of changed layers by those in the file, in capitals.
std::map<std::wstring, std::wstring> newLayerNames(const AcDbDatabase& db) {
    constexpr int kName = AcDb::kDxfSymbolTableName;
    std::map<std::wstring, std::wstring> names;
    const auto* const layers = Residence::peek<AcDbSymbolTable>(db.layerTableId());
    if (layers == nullptr) return names;
    for (const AcDbObjectId id : layers->recordIds()) {
        const auto* const layer = Residence::peek<AcDbSymbolTableRecord>(id);
        if (layer == nullptr || id.isErased() ||
            Residence::record(*layer) != Residence::Record::kChanged)
            continue;
        readAgain(*layer, [&](std::span<const DxfTag> groups, AcDbDxfFiler& filer) {
            const DxfTag* const name = DxfRecord(groups).find(kName);
            if (name != nullptr) names.emplace(upperCased(filer.text(*name)), layer->nameOf());
        });
    }
    return names;
}

/// Data from the file name layers as the file does: those that were renamed get their present
/// names.
void nameLayersAsNow(const AcDbDatabase* db, DataItems& items) {
    constexpr int kLayer = AcDb::kDxfXdLayerName;
    const auto isLayer = [](const DataItem& item) { return item.code == kLayer; };
    if (db == nullptr || std::none_of(items.begin(), items.end(), isLayer)) return;
    const std::map<std::wstring, std::wstring> names = newLayerNames(*db);
    for (DataItem& item : items) {
        if (!isLayer(item)) continue;
        const auto renamed = names.find(upperCased(item.text()));
        if (renamed != names.end()) item.value = renamed->second;
    }
}

/// Whether one value is of a kind and a length that extended data can hold.
Acad::ErrorStatus checkItem(const DataItem& item) {
    constexpr std::size_t kLongestText = 255;
    constexpr std::size_t kLongestChunk = 127;
    if (!isXdataCode(item.code)) return Acad::eInvalidResBuf;
    const std::wstring_view text = item.text();
    if (item.code == kApplication && text.empty()) return Acad::eInvalidResBuf;
    if (item.code == kBrace && text != L"{" && text != L"}") return Acad::eInvalidResBuf;
    if (item.code == kHandle && !isHandle(text)) return Acad::eInvalidResBuf;
    if (text.size() > kLongestText) return Acad::eOutOfRange;
    const auto* const chunk = std::get_if<DataItem::Bytes>(&item.value);
    return chunk != nullptr && chunk->size() > kLongestChunk ? Acad::eOutOfRange : Acad::eOk;
}

/// Each application's braces match by themselves.
bool bracesMatch(const DataItems& items) {
    int depth = 0;
    for (const DataItem& item : items) {
        if (item.code == kApplication && depth != 0) return false;
        if (item.code != kBrace) continue;
        depth += item.text() == L"{" ? 1 : -1;
        if (depth < 0) return false;
    }
    return depth == 0;
}

struct ItemBytes {
    int code;

    std::size_t operator()(double) const { return 8; }
    std::size_t operator()(const AcGePoint3d&) const { return 24; }
    std::size_t operator()(std::int16_t) const { return 2; }
    std::size_t operator()(std::int32_t) const { return 4; }
    std::size_t operator()(std::int64_t) const { return 8; }
    std::size_t operator()(AcDbObjectId) const { return 8; }
    std::size_t operator()(const DataItem::Bytes& bytes) const { return 1 + bytes.size(); }
    std::size_t operator()(const std::wstring& text) const {
        if (code == kBrace) return 1;
        return code == kText ? 2 + toUtf8(text).size() : 8;
    }
};

/// Calls `visit` with each application's items, its name's first.
template <class Visit>
void forEachApplication(std::span<const DataItem> items, Visit visit) {
    const auto isName = [](const DataItem& item) { return item.code == kApplication; };
    auto begin = std::find_if(items.begin(), items.end(), isName);
    while (begin != items.end()) {
        const auto end = std::find_if(begin + 1, items.end(), isName);
        visit(std::span<const DataItem>(begin, end));
        begin = end;
    }
}

bool isRegistered(const AcDbDatabase& db, std::wstring_view application) {
    const auto* const table = Residence::peek<AcDbRegAppTable>(db.regAppTableId());
    return table != nullptr && !table->findRecord(application).isNull();
}

bool names(const DataItems& items, std::wstring_view application) {
    return std::any_of(items.begin(), items.end(), [&](const DataItem& item) {
        return item.code == kApplication && equalNoCase(item.text(), application);
    });
}

Acad::ErrorStatus checkRegistered(const AcDbObject& object, const DataItems& items) {
    const AcDbDatabase* db = object.database();
    if (db == nullptr) db = DbState::current().services.workingDatabase();
    if (db == nullptr) return Acad::eNoDatabase;
    const bool known = std::all_of(items.begin(), items.end(), [db](const DataItem& item) {
        return item.code != kApplication || isRegistered(*db, item.text());
    });
    return known ? Acad::eOk : Acad::eRegappIdNotFound;
}

/// What an object's data become when `given` replaces those of the applications it names.
DataItems merged(const DataItems& held, const DataItems& given) {
    DataItems result;
    const auto append = [&result](std::span<const DataItem> items) {
        result.insert(result.end(), items.begin(), items.end());
    };
    forEachApplication(held, [&](std::span<const DataItem> items) {
        if (!names(given, items.front().text())) append(items);
    });
    forEachApplication(given, [&](std::span<const DataItem> items) {
        if (items.size() > 1) append(items);
    });
    return result;
}

bool belongsToPlace(const DataItem& item) {
    return (item.code >= AcDb::kDxfXdWorldXCoord && item.code <= AcDb::kDxfXdWorldXDir) ||
           item.code == AcDb::kDxfXdDist || item.code == AcDb::kDxfXdScale;
}

void transformItem(DataItem& item, const AcGeMatrix3d& transform) {
    if (auto* const point = std::get_if<AcGePoint3d>(&item.value)) {
        AcGeVector3d vector = transform * point->asVector();
        if (item.code == AcDb::kDxfXdWorldXDir && !vector.isZeroLength()) {
            vector = vector.normal() * point->asVector().length();
        }
        const bool moves = item.code == AcDb::kDxfXdWorldXCoord;
        *point = moves ? transform * *point : AcGePoint3d::kOrigin + vector;
    } else if (auto* const length = std::get_if<double>(&item.value)) {
        *length *= transform.scale();
    }
}

} // namespace

void transformXdata(AcDbObject& object, const AcGeMatrix3d& transform) {
    DataItems items = ObjectData::xdata(object);
    if (std::none_of(items.begin(), items.end(), belongsToPlace)) return;
    for (DataItem& item : items) {
        if (belongsToPlace(item)) transformItem(item, transform);
    }
    ObjectData::setXdata(object, std::move(items));
}

bool isXdataCode(int code) {
    constexpr std::array kCodes = {
        AcDb::kDxfXdAsciiString, AcDb::kDxfRegAppName,    AcDb::kDxfXdControlString,
        AcDb::kDxfXdLayerName,   AcDb::kDxfXdBinaryChunk, AcDb::kDxfXdHandle,
        AcDb::kDxfXdXCoord,      AcDb::kDxfXdWorldXCoord, AcDb::kDxfXdWorldXDisp,
        AcDb::kDxfXdWorldXDir,   AcDb::kDxfXdReal,        AcDb::kDxfXdDist,
        AcDb::kDxfXdScale,       AcDb::kDxfXdInteger16,   AcDb::kDxfXdInteger32};
    return std::find(kCodes.begin(), kCodes.end(), code) != kCodes.end();
}

std::size_t xdataBytes(const DataItems& items) {
    std::size_t bytes = items.size();
    for (const DataItem& item : items)
        bytes += std::visit(ItemBytes{item.code}, item.value);
    return bytes;
}

Acad::ErrorStatus readXdata(const resbuf* chain, DataItems& items) {
    if (chain == nullptr || chain->restype != kApplication) return Acad::eInvalidResBuf;
    for (; chain != nullptr; chain = chain->rbnext) {
        auto item = itemOf(*chain);
        if (!item) return Acad::eInvalidResBuf;
        if (const auto status = checkItem(*item); status != Acad::eOk) return status;
        items.push_back(*std::move(item));
    }
    return bracesMatch(items) ? Acad::eOk : Acad::eInvalidResBuf;
}

} // namespace headless

using headless::DataItem;
using headless::DataItems;
using headless::ObjectData;

resbuf* AcDbObject::xData(const ACHAR* regappName) const {
    assertReadEnabled();
    DataItems all = ObjectData::xdata(*this);
    headless::nameLayersAsNow(database(), all);
    if (regappName == nullptr) return headless::chainOf(all);
    DataItems wanted;
    headless::forEachApplication(all, [&](std::span<const DataItem> items) {
        if (headless::equalNoCase(items.front().text(), regappName))
            wanted.insert(wanted.end(), items.begin(), items.end());
    });
    return headless::chainOf(wanted);
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* xdata) {
    assertWriteEnabled(true, false);
    DataItems given;
    if (const auto status = headless::readXdata(xdata, given); status != Acad::eOk) return status;
    if (const auto status = headless::checkRegistered(*this, given); status != Acad::eOk)
        return status;
    DataItems result = headless::merged(ObjectData::xdata(*this), given);
    if (headless::xdataBytes(result) > headless::kMostXdataBytes) return Acad::eOutOfRange;
    ObjectData::setXdata(*this, std::move(result));
    return Acad::eOk;
}

int acdbRegApp(const ACHAR* application) {
    AcDbDatabase* const db = headless::DbState::current().services.workingDatabase();
    if (db == nullptr || application == nullptr) return RTERROR;
    AcDbObjectPointer<AcDbRegAppTable> table(db->regAppTableId(), AcDb::kForWrite);
    if (table.openStatus() != Acad::eOk) return RTERROR;
    if (table->has(application)) return RTNORM;
    AcDbObjectPointer<AcDbRegAppTableRecord> record;
    record.create();
    if (record->setName(application) != Acad::eOk) return RTERROR;
    return table->add(record.object()) == Acad::eOk ? RTNORM : RTERROR;
}

int acdbXdSize(const resbuf* xdata, Adesk::Int32* result) {
    DataItems items;
    if (result == nullptr || headless::readXdata(xdata, items) != Acad::eOk) return RTERROR;
    *result = static_cast<Adesk::Int32>(headless::xdataBytes(items));
    return RTNORM;
}

int acdbXdRoom(const ads_name object, Adesk::Int32* result) {
    AcDbObjectId id;
    if (result == nullptr || acdbGetObjectId(id, object) != Acad::eOk) return RTERROR;
    const AcDbObject* const held = headless::Residence::peek(id);
    if (held == nullptr || id.isErased()) return RTERROR;
    const std::size_t used = headless::xdataBytes(ObjectData::xdata(*held));
    *result =
        static_cast<Adesk::Int32>(headless::kMostXdataBytes) - static_cast<Adesk::Int32>(used);
    return RTNORM;
}
