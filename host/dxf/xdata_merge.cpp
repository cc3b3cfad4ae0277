#include "dxf/xdata_merge.h"

#include <algorithm>

#include "db/dxf_code.h"
#include "db/xdata.h"
#include "win/casing.h"

namespace headless {
namespace {

constexpr int kApplication = AcDb::kDxfRegAppName;
constexpr int kLayer = AcDb::kDxfXdLayerName;

template <class Entries>
auto* named(Entries& entries, std::wstring_view name) {
    const auto found = std::find_if(entries.begin(), entries.end(), [name](const auto& entry) {
        return equalNoCase(entry.name, name);
    });
    return found == entries.end() ? nullptr : &*found;
}

bool sameText(const DxfOutTag& a, const DxfOutTag& b) {
    if (a.code != b.code || a.kind != b.kind) return false;
    return a.kind == DxfOutTag::Kind::kText ? a.text() == b.text() : a.integer == b.integer;
}

} // namespace

void XdataMerge::listModelled(const DxfOutput& now, const DxfOutput* before) {
    modelled_.clear();
    for (const DxfOutPart& part : now.parts()) {
        if (!part.application) continue;
        const auto tags = now.tagsOf(part);
        bool changed = true;
        for (const DxfOutPart& old :
             before == nullptr ? std::span<const DxfOutPart>() : before->parts()) {
            if (!old.application) continue;
            const auto oldTags = before->tagsOf(old);
            if (oldTags.front().text() == tags.front().text())
                changed =
                    !std::equal(tags.begin(), tags.end(), oldTags.begin(), oldTags.end(), sameText);
        }
        modelled_.push_back({tags.front().text(), tags, changed});
    }
}

void XdataMerge::listItems(const DataItems& items) {
    const std::span<const DataItem> all = items;
    std::size_t begin = 0;
    while (begin < all.size()) {
        std::size_t end = begin + 1;
        while (end < all.size() && all[end].code != kApplication)
            ++end;
        listed_.push_back({all[begin].text(), all.subspan(begin, end - begin)});
        begin = end;
    }
}

void XdataMerge::put(const RecordGroups* file, std::size_t begin, const DataItems* items,
                     const DxfOutput& now, const DxfOutput* before) {
    listModelled(now, before);
    listed_.clear();
    if (items != nullptr) listItems(*items);
    const bool changed =
        items != nullptr || std::any_of(modelled_.begin(), modelled_.end(),
                                        [](const Modelled& m) { return m.changed; });
    if (file != nullptr && !changed) {
        putGroups(*file, begin, file->size());
        return;
    }
    if (file != nullptr) putFromFile(*file, begin, items != nullptr);
    for (const Modelled& values : modelled_) {
        if (values.done || !values.changed || values.tags.size() < 2) continue;
        putModelled(values);
        if (Listed* const same = named(listed_, values.name)) same->done = true;
    }
    for (const Listed& data : listed_) {
        if (!data.done) putItems(data.items);
    }
}

void XdataMerge::putFromFile(const RecordGroups& file, std::size_t begin, bool itemsKnown) {
    while (begin < file.size()) {
        std::size_t end = begin + 1;
        while (end < file.size() && file[end].code != kApplication)
            ++end;
        if (file[begin].code == kApplication)
            putApplication(file, begin, end, itemsKnown);
        else
            putGroups(file, begin, end);
        begin = end;
    }
}

void XdataMerge::putApplication(const RecordGroups& file, std::size_t begin, std::size_t end,
                                bool itemsKnown) {
    DataItems before = itemsOf(file.record().tags.subspan(begin, end - begin), filer_);
    std::erase_if(before, [](const DataItem& item) { return !isXdataCode(item.code); });
    const std::wstring_view name = before.front().text();
    Listed* const data = named(listed_, name);
    if (data != nullptr) data->done = true;
    Modelled* const values = named(modelled_, name);
    if (values != nullptr && values->changed) {
        values->done = true;
        if (values->tags.size() > 1) putModelled(*values);
        return;
    }
    if (itemsKnown && data == nullptr) return;
    if (itemsKnown &&
        !std::equal(before.begin(), before.end(), data->items.begin(), data->items.end()))
        putItems(data->items);
    else
        putGroups(file, begin, end);
}

void XdataMerge::putModelled(const Modelled& values) {
    mention_(values.name);
    for (const DxfOutTag& tag : values.tags)
        groups_.tag(tag);
}

void XdataMerge::putItems(std::span<const DataItem> items) {
    for (const DataItem& item : items) {
        const bool layer = item.code == kLayer && !newNames_.empty();
        if (const std::wstring* const name = layer ? newNameOf(item.text()) : nullptr)
            groups_.text(kLayer, *name);
        else
            groups_.item(item);
    }
}

void XdataMerge::putGroups(const RecordGroups& file, std::size_t begin, std::size_t end) {
    std::size_t kept = begin;
    for (std::size_t at = begin; at < end && !newNames_.empty(); ++at) {
        const std::wstring* const name =
            file[at].code == kLayer ? newNameOf(filer_.text(file[at])) : nullptr;
        if (name == nullptr) continue;
        groups_.buffer() += file.bytes(kept, at);
        groups_.text(kLayer, *name);
        kept = at + 1;
    }
    groups_.buffer() += file.bytes(kept, end);
}

const std::wstring* XdataMerge::newNameOf(std::wstring_view layer) const {
    const auto known = newNames_.find(upperCased(layer));
    return known == newNames_.end() ? nullptr : &known->second;
}

bool XdataMerge::namesRenamed(const RecordGroups& file) const {
    if (newNames_.empty()) return false;
    const auto groups = file.record().tags;
    return std::any_of(groups.begin(), groups.end(), [this](const DxfTag& group) {
        return group.code == kLayer && newNameOf(filer_.text(group)) != nullptr;
    });
}

} // namespace headless
