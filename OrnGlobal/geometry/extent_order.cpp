#include "geometry/extent_order.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

#include "OrnCore/zel_dwg.h"
#include "OrnCore/zel_math.h"

int SortPline::nSortMethod = 0;

namespace {

constexpr double kTolerance = 0.1;

/// What an extents covers of one axis.
struct Range {
    double low;
    double high;

    /// Few pairs need it.
    double middle() const { return CZelDwg::GetLineMidPoint({low, 0.0, 0.0}, {high, 0.0, 0.0}).x; }
};

Range heightOf(const AcDbExtents& extents) { return {extents.minPoint().y, extents.maxPoint().y}; }

Range widthOf(const AcDbExtents& extents) { return {extents.minPoint().x, extents.maxPoint().x}; }

bool isLevel(double a, double b) { return std::abs(a - b) < kTolerance; }
bool isBeyond(double a, double b) { return a > b + kTolerance; }

/// a ends below b's end and does not begin below b's beginning.
bool liesWithin(const Range& a, const Range& b) {
    return isBeyond(b.high, a.high) && (isLevel(b.low, a.low) || isBeyond(a.low, b.low));
}

/// The same with level ends allowed.
bool coversOrMeets(const Range& a, const Range& b) {
    return (isLevel(b.high, a.high) || isBeyond(a.high, b.high)) &&
           (isLevel(a.low, b.low) || isBeyond(b.low, a.low));
}

/// b is shifted up, yet each overlaps the other by more than half.
bool isShiftedLittle(const Range& a, const Range& b) {
    return isBeyond(b.high, a.high) && isBeyond(b.low, a.low) && isBeyond(a.middle(), b.low) &&
           isBeyond(a.high, b.middle());
}

bool standTogether(const Range& a, const Range& b) {
    return isLevel(a.low, b.low) || isLevel(a.high, b.high) || liesWithin(a, b) ||
           coversOrMeets(a, b) || isShiftedLittle(a, b) || isShiftedLittle(b, a);
}

bool isSame(const Range& a, const Range& b) {
    return CZelMath::EqualTo(a.low, b.low, kTolerance) != 0 &&
           CZelMath::EqualTo(a.high, b.high, kTolerance) != 0;
}

/// Extents noted for long lists, whose entities do not fit into the processor's caches: a table
/// with open addresses, of which one line of the cache holds an id and its extents.
class NotedExtents {
public:
    void note(const AcDbObjectId& id) {
        if (id.isNull()) return;
        if (2 * (count_ + 1) > slots_.size()) grow();
        Slot& slot = slots_[placeOf(id)];
        if (slot.id.isNull()) ++count_;
        slot = {id, CZelDwg::GetGeomExtents(id)};
    }
    void clear() { *this = NotedExtents(); }
    /// @param fresh  room for the extents of an entity that was not noted.
    const AcDbExtents& of(const AcDbObjectId& id, AcDbExtents& fresh) const {
        if (count_ > 0)
            if (const Slot& slot = slots_[placeOf(id)]; !slot.id.isNull()) return slot.box;
        return fresh = CZelDwg::GetGeomExtents(id);
    }

private:
    struct alignas(64) Slot {
        AcDbObjectId id;
        AcDbExtents box;
    };

    /// Where the id is, or would come to be.
    std::size_t placeOf(const AcDbObjectId& id) const {
        const std::size_t last = slots_.size() - 1;
        constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15; // ids of a drawing lie side by side
        std::size_t place = std::hash<AcDbObjectId>()(id) * kSpread >> 32U & last;
        while (!slots_[place].id.isNull() && slots_[place].id != id)
            place = (place + 1) & last;
        return place;
    }
    void grow() {
        constexpr std::size_t kFirst = 64;
        std::vector<Slot> former(std::max(kFirst, 2 * slots_.size()));
        former.swap(slots_);
        for (const Slot& slot : former)
            if (!slot.id.isNull()) slots_[placeOf(slot.id)] = slot;
    }

    std::vector<Slot> slots_; // a power of two
    std::size_t count_ = 0;
};

NotedExtents& notedExtents() {
    static NotedExtents noted;
    return noted;
}

} // namespace

bool ExtLineEqual(const AcDbExtents& a, const AcDbExtents& b) {
    return standTogether(heightOf(a), heightOf(b));
}

bool ExtColumnEqual(const AcDbExtents& a, const AcDbExtents& b) {
    return standTogether(widthOf(a), widthOf(b));
}

bool ExtLineLess(const AcDbExtents& a, const AcDbExtents& b) {
    if (isSame(heightOf(a), heightOf(b))) return false;
    return isBeyond(a.maxPoint().y, b.maxPoint().y);
}

bool ExtColumnLess(const AcDbExtents& a, const AcDbExtents& b) {
    if (isSame(widthOf(a), widthOf(b))) return false;
    return isBeyond(b.maxPoint().x, a.maxPoint().x);
}

bool SortPline::operator()(const AcDbObjectId& id1, const AcDbObjectId& id2) const {
    AcDbExtents fresh1;
    AcDbExtents fresh2;
    const AcDbExtents& a = notedExtents().of(id1, fresh1);
    const AcDbExtents& b = notedExtents().of(id2, fresh2);
    switch (nSortMethod) {
    case 0:
        return ExtColumnEqual(a, b) ? ExtLineLess(b, a) : ExtColumnLess(a, b);
    case 1:
        return ExtColumnEqual(a, b) ? ExtLineLess(a, b) : ExtColumnLess(a, b);
    case 2:
        return ExtLineEqual(a, b) ? ExtColumnLess(a, b) : ExtLineLess(b, a);
    case 3:
        return ExtLineEqual(a, b) ? ExtColumnLess(a, b) : ExtLineLess(a, b);
    default:
        return false;
    }
}

void NoteExtentLess(const AcDbObjectId& id) { notedExtents().note(id); }

void InitExtentLess() { notedExtents().clear(); }
