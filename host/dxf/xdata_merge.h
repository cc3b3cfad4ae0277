// Brings the extended data of a record up to date, application by application.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "db/data_item.h"
#include "db/dxf_output.h"
#include "dxf/group_writer.h"
#include "dxf/record_groups.h"

namespace headless {

class XdataMerge {
public:
    /// Told of each application that data is written for.
    using Mention = std::function<void(std::wstring_view)>;

    /// @param filer  reads values of the file.
    XdataMerge(GroupWriter& groups, AcDbDxfFiler& filer, Mention mention)
        : groups_(groups), filer_(filer), mention_(std::move(mention)) {}

    /// New names of layers by the old ones in capitals: data that names a layer follows it.
    void setRenamedLayers(std::map<std::wstring, std::wstring> names) {
        newNames_ = std::move(names);
    }
    /// True when the record's data names one of these layers.
    bool namesRenamed(const RecordGroups& file) const;

    /// Puts what the record says from its group `begin` on; data that did not change keeps its
    /// bytes.
    /// @param file    null for a record without a predecessor.
    /// @param items   all data as it is now; null when that is as in the file.
    /// @param now     has the parts of data that the object models.
    /// @param before  the same before it was changed.
    void put(const RecordGroups* file, std::size_t begin, const DataItems* items,
             const DxfOutput& now, const DxfOutput* before);

private:
    /// The data of one application: groups of the file, items or groups of the object.
    struct Modelled {
        std::wstring_view name;
        std::span<const DxfOutTag> tags;
        bool changed;
        bool done = false;
    };
    struct Listed {
        std::wstring_view name;
        std::span<const DataItem> items;
        bool done = false;
    };

    void listModelled(const DxfOutput& now, const DxfOutput* before);
    void listItems(const DataItems& items);
    void putFromFile(const RecordGroups& file, std::size_t begin, bool itemsKnown);
    void putApplication(const RecordGroups& file, std::size_t begin, std::size_t end,
                        bool itemsKnown);
    void putModelled(const Modelled& values);
    void putItems(std::span<const DataItem> items);
    void putGroups(const RecordGroups& file, std::size_t begin, std::size_t end);
    const std::wstring* newNameOf(std::wstring_view layer) const;

    GroupWriter& groups_;
    AcDbDxfFiler& filer_;
    Mention mention_;
    std::map<std::wstring, std::wstring> newNames_;
    std::vector<Modelled> modelled_;
    std::vector<Listed> listed_;
};

} // namespace headless
