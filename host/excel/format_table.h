// The formats of a workbook, each kept once.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <unordered_map>

#include "excel/cell_format.h"

namespace headless::excel {

using FormatId = std::uint32_t;

/// The format of cells that nobody formatted.
constexpr FormatId kDefaultFormat = 0;

/// What a change does to any format, as numbers: the same change of the same format has the same
/// result, which the table remembers.
struct FormatChange {
    std::uint32_t what = 0; ///< Of the caller's own numbering; 0 is not remembered.
    std::uint64_t value = 0;

    bool operator==(const FormatChange&) const = default;
};

class FormatTable {
public:
    FormatTable() { add(CellFormat{}); }

    [[nodiscard]] const CellFormat& at(FormatId id) const { return formats_[id]; }
    FormatId add(const CellFormat& format);
    /// What cells that nobody formatted look like from now on; before any other format is added.
    void setDefault(const CellFormat& format);

    /// The format `id` after `change(format)`.
    /// @param known  tells the change, when it is worth remembering.
    template <class Change>
    FormatId changed(FormatId id, Change change, const FormatChange& known = {}) {
        Remembered& slot = remembered_[(id * 31U + known.what * 7U + known.value) % kSlots];
        if (known.what != 0 && slot.id == id && slot.change == known) return slot.result;
        CellFormat format = at(id);
        change(format);
        const FormatId result = add(format);
        slot = {id, known, result};
        return result;
    }

private:
    /// Tables are filled cell by cell with few formats, so a small memory holds all changes of one.
    static constexpr std::size_t kSlots = 256;
    struct Remembered {
        FormatId id = 0;
        FormatChange change;
        FormatId result = 0;
    };

    struct Hash {
        std::size_t operator()(const CellFormat* format) const noexcept;
    };
    struct Equal {
        bool operator()(const CellFormat* a, const CellFormat* b) const { return *a == *b; }
    };

    std::array<Remembered, kSlots> remembered_;
    std::deque<CellFormat> formats_; // Stays in place: the index points into it.
    std::unordered_map<const CellFormat*, FormatId, Hash, Equal> index_;
};

} // namespace headless::excel
