#include "db/object_data.h"

#include <algorithm>

#include "db/database.h"
#include "db/dxf_code.h"
#include "db/record_archive.h"
#include "db/residence.h"
#include "db/xdata.h"

namespace headless {
namespace {

constexpr int kApplication = AcDb::kDxfRegAppName;
constexpr int kSubclassMarker = AcDb::kDxfSubclass;
constexpr int kBraces = AcDb::kDxfControlString;
constexpr int kSoftPointer = AcDb::kDxfSoftPointerId;

/// Extended data ends the record, but what stands before its first application is the object's own.
DataItems xdataOfRecord(std::span<const DxfTag> groups, AcDbDxfFiler& filer) {
    const auto first = std::find_if(groups.begin(), groups.end(),
                                    [](const DxfTag& tag) { return tag.code == kApplication; });
    DataItems items = itemsOf({first, groups.end()}, filer);
    // Some programs leave coordinates without a point.
    std::erase_if(items, [](const DataItem& item) { return !isXdataCode(item.code); });
    return items;
}

/// Reactors stand in braces before the object's first subclass.
std::vector<AcDbObjectId> reactorsOfRecord(std::span<const DxfTag> groups, AcDbDxfFiler& filer) {
    std::vector<AcDbObjectId> ids;
    bool inside = false;
    for (const DxfTag& tag : groups) {
        if (tag.code == kSubclassMarker) break;
        if (tag.code == kBraces) inside = tag.text() == "{ACAD_REACTORS";
        if (inside && tag.code == kSoftPointer) ids.push_back(filer.objectId(tag));
    }
    std::erase_if(ids, [](AcDbObjectId id) { return id.isNull(); });
    return ids;
}

/// Shows the record of an object that may have something to show.
void readExtras(const AcDbObject& object, const RecordArchive::Visit& visit) {
    if (!Residence::source(object).plain) readAgain(object, visit);
}

void* asReactor(AcDbObjectId id) { return static_cast<AcDbStub*>(id); }

} // namespace

ObjectExtras& ObjectData::extras(const AcDbObject& object) {
    if (object.extras_ == nullptr) object.extras_ = std::make_unique<ObjectExtras>();
    return *object.extras_;
}

void ObjectData::markChanged(AcDbObject& object) {
    // Members of a group get it for a reactor, and parts change with their owner, while somebody
    // else may have them open.
    if (object.isWriteEnabled()) {
        object.assertWriteEnabled();
        return;
    }
    noteForUndo(object);
    object.flags_ |= AcDbObject::kChanged | AcDbObject::kReshaped;
    object.beforeChange();
}

void ObjectData::detachClone(AcDbObject& clone, const AcDbObject& original) {
    DataItems xdata = ObjectData::xdata(original);
    clone.extras_ = std::make_unique<ObjectExtras>();
    clone.extras_->colorName = colorName(original);
    clone.extras_->xdata = std::move(xdata);
    clone.extras_->reactors.emplace();
    clone.extras_->sourceDatabase = original.database();
}

void ObjectData::dropForeignSource(AcDbObject& object) {
    if (object.extras_ == nullptr) return;
    const void* const origin = std::exchange(object.extras_->sourceDatabase, nullptr);
    if (origin != object.database()) object.source_ = {};
}

std::wstring_view ObjectData::colorName(const AcDbObject& object) {
    return object.extras_ == nullptr ? std::wstring_view() : object.extras_->colorName;
}

void ObjectData::setColorName(AcDbObject& object, std::wstring_view name) {
    if (object.extras_ != nullptr || !name.empty()) extras(object).colorName = name;
}

DataItems ObjectData::xdata(const AcDbObject& object) {
    if (object.extras_ != nullptr && object.extras_->xdata) return *object.extras_->xdata;
    DataItems items;
    readExtras(object, [&](std::span<const DxfTag> groups, AcDbDxfFiler& filer) {
        items = xdataOfRecord(groups, filer);
    });
    return items;
}

const DataItems* ObjectData::ownXdata(const AcDbObject& object) {
    return object.extras_ != nullptr && object.extras_->xdata ? &*object.extras_->xdata : nullptr;
}

void ObjectData::setXdata(AcDbObject& object, DataItems items) {
    markChanged(object);
    extras(object).xdata = std::move(items);
}

std::vector<AcDbObjectId> ObjectData::reactors(const AcDbObject& object) {
    std::vector<AcDbObjectId> ids;
    if (object.extras_ != nullptr && object.extras_->reactors) {
        for (void* const reactor : *object.extras_->reactors)
            ids.push_back(acdbPersistentReactorObjectId(reactor));
        return ids;
    }
    readExtras(object, [&](std::span<const DxfTag> groups, AcDbDxfFiler& filer) {
        ids = reactorsOfRecord(groups, filer);
    });
    return ids;
}

bool ObjectData::hasOwnReactors(const AcDbObject& object) {
    return object.extras_ != nullptr && object.extras_->reactors.has_value();
}

AcDbVoidPtrArray& ObjectData::keptReactors(const AcDbObject& object) {
    auto& kept = extras(object).reactors;
    if (kept) return *kept;
    AcDbVoidPtrArray pointers;
    for (const AcDbObjectId id : reactors(object))
        pointers.append(asReactor(id));
    return kept.emplace(std::move(pointers));
}

void ObjectData::addReactor(AcDbObject& object, AcDbObjectId reactor) {
    markChanged(object);
    keptReactors(object).append(asReactor(reactor));
}

bool ObjectData::removeReactor(AcDbObject& object, AcDbObjectId reactor) {
    AcDbVoidPtrArray& kept = keptReactors(object);
    if (!kept.contains(asReactor(reactor))) return false;
    markChanged(object);
    return kept.remove(asReactor(reactor));
}

void ObjectData::eraseOwned(AcDbObject& owner) {
    std::vector<AcDbObjectId> waiting;
    owner.listHardOwned(waiting);
    if (waiting.empty()) return;
    // A list rather than recursion: damaged drawings nest dictionaries thousands deep or in rings.
    std::vector<AcDbObjectId>& erased = extras(owner).erasedAlong;
    erased.clear();
    while (!waiting.empty()) {
        AcDbObjectPointer<AcDbObject> owned;
        const AcDbObjectId id = waiting.back();
        waiting.pop_back();
        if (owned.open(id, AcDb::kForWrite, false, true) != Acad::eOk) continue;
        if (owned->eraseAlone(true) != Acad::eOk) continue;
        erased.push_back(id);
        owned->listHardOwned(waiting);
    }
}

void ObjectData::bringBackOwned(AcDbObject& owner) {
    if (owner.extras_ == nullptr) return;
    const std::vector<AcDbObjectId> erased = std::exchange(owner.extras_->erasedAlong, {});
    for (const AcDbObjectId id : erased) {
        AcDbObjectPointer<AcDbObject> owned(id, AcDb::kForWrite, true, true);
        if (owned.openStatus() == Acad::eOk) owned->eraseAlone(false);
    }
}

} // namespace headless

Acad::ErrorStatus AcDbObject::addPersistentReactor(AcDbObjectId reactor) {
    assertWriteEnabled(true, false);
    if (reactor.isNull()) return Acad::eNullObjectId;
    if (hasPersistentReactor(reactor)) return Acad::eDuplicateKey;
    headless::ObjectData::addReactor(*this, reactor);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::removePersistentReactor(AcDbObjectId reactor) {
    assertWriteEnabled(true, false);
    return headless::ObjectData::removeReactor(*this, reactor) ? Acad::eOk : Acad::eKeyNotFound;
}

bool AcDbObject::hasPersistentReactor(AcDbObjectId reactor) const {
    assertReadEnabled();
    const auto ids = headless::ObjectData::reactors(*this);
    return std::find(ids.begin(), ids.end(), reactor) != ids.end();
}

const AcDbVoidPtrArray* AcDbObject::reactors() const {
    assertReadEnabled();
    const AcDbVoidPtrArray& kept = headless::ObjectData::keptReactors(*this);
    return kept.isEmpty() ? nullptr : &kept;
}

bool acdbIsPersistentReactor(void* reactor) { return reactor != nullptr; }

AcDbObjectId acdbPersistentReactorObjectId(void* reactor) {
    return AcDbObjectId(static_cast<AcDbStub*>(reactor));
}
