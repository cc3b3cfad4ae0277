#include "db/xrecord.h"

#include <algorithm>
#include <array>

#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/record_archive.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbXrecord, AcDbObject, "XRECORD")
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbXrecordIterator, AcRxObject)

using headless::DataItem;
using headless::DataItems;
using headless::DxfTag;

namespace {

constexpr int kSubclassMarker = 100;
constexpr int kMergeStyle = 280;
constexpr int kApplication = 1001;

bool isXrecordCode(int code) {
    constexpr std::array kOthers = {5, 100, 101, 105, 999, kApplication};
    return code >= 1 && std::find(kOthers.begin(), kOthers.end(), code) == kOthers.end();
}

/// The record's own values: from its subclass on, braces and all, to the extended data. The merge
/// style stands first; the same code further on is one of the values.
std::span<const DxfTag> valuesOf(std::span<const DxfTag> groups) {
    const auto end = std::find_if(groups.begin(), groups.end(),
                                  [](const DxfTag& tag) { return tag.code == kApplication; });
    auto begin = std::find_if(groups.begin(), end, [](const DxfTag& tag) {
        return tag.code == kSubclassMarker && tag.text() == "AcDbXrecord";
    });
    if (begin != end) ++begin;
    if (begin != end && begin->code == kMergeStyle) ++begin;
    return {begin, end};
}

} // namespace

Acad::ErrorStatus AcDbXrecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    const auto tags = filer->subclass("AcDbXrecord");
    if (!tags.empty() && tags.front().code == kMergeStyle)
        mergeStyle_ = static_cast<AcDb::DuplicateRecordCloning>(tags.front().integer());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbObject::dxfOutFields(filer); status != Acad::eOk) return status;
    headless::DxfOutput& out = filer->output();
    out.wholeSubclass("AcDbXrecord");
    out.integer(kMergeStyle, mergeStyle_);
    headless::writeItems(items_ ? *items_ : out.keep(items()), out);
    return Acad::eOk;
}

DataItems AcDbXrecord::items() const {
    if (items_) return *items_;
    DataItems items;
    headless::readAgain(*this, [&](std::span<const DxfTag> groups, AcDbDxfFiler& filer) {
        items = headless::itemsOf(valuesOf(groups), filer);
    });
    return items;
}

void AcDbXrecord::becomeIndependent(const AcDbObject& original) {
    items_ = static_cast<const AcDbXrecord&>(original).items();
}

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** chain, AcDbDatabase* /*auxDb*/) const {
    assertReadEnabled();
    if (chain == nullptr) return Acad::eInvalidInput;
    *chain = headless::chainOf(items());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& chain, AcDbDatabase* /*auxDb*/) {
    DataItems given;
    for (const resbuf* buffer = &chain; buffer != nullptr; buffer = buffer->rbnext) {
        auto item = isXrecordCode(buffer->restype) ? headless::itemOf(*buffer) : std::nullopt;
        if (!item) return Acad::eInvalidResBuf;
        given.push_back(*std::move(item));
    }
    return change(items_, std::move(given));
}

AcDbXrecordIterator::AcDbXrecordIterator(const AcDbXrecord* record) {
    if (record == nullptr) return;
    record->assertReadEnabled();
    items_ = record->items();
}

bool AcDbXrecordIterator::next() {
    if (!done()) ++position_;
    return !done();
}

int AcDbXrecordIterator::curRbType() const { return done() ? RTNONE : items_[position_].code; }

Acad::ErrorStatus AcDbXrecordIterator::getCurResbuf(resbuf& buffer, AcDbDatabase* /*auxDb*/) const {
    if (done()) return Acad::eIteratorDone;
    headless::setValue(buffer, items_[position_]);
    return Acad::eOk;
}

void AcDbXrecord::forEachReference(const headless::ReferenceVisitor& visit) {
    if (!xlateReferences_ || !items_) return;
    for (DataItem& item : *items_) {
        auto* const id = std::get_if<AcDbObjectId>(&item.value);
        if (id == nullptr) continue;
        const bool hard = (item.code >= 340 && item.code < 350) || item.code >= 360;
        visit(*id,
              hard ? headless::ReferenceKind::kHardPointer : headless::ReferenceKind::kSoftPointer);
    }
}
