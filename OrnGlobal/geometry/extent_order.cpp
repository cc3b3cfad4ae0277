#include "geometry/extent_order.h"

#include <array>
#include <cmath>
#include <unordered_map>

#include "OrnCore/zel_dwg.h"
#include "OrnCore/zel_math.h"

int SortPline::nSortMethod = 0;

namespace {

constexpr double kTolerance = 0.1;

/// What an extents covers of one axis.
struct Range {
    double low;
    double middle;
    double high;
};

Range heightOf(const AcDbExtents& extents) {
    const AcGePoint3d middle = CZelDwg::GetLineMidPoint(extents.minPoint(), extents.maxPoint());
    return {extents.minPoint().y, middle.y, extents.maxPoint().y};
}

Range widthOf(const AcDbExtents& extents) {
    const AcGePoint3d middle = CZelDwg::GetLineMidPoint(extents.minPoint(), extents.maxPoint());
    return {extents.minPoint().x, middle.x, extents.maxPoint().x};
}

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
    return isBeyond(b.high, a.high) && isBeyond(b.low, a.low) && isBeyond(a.middle, b.low) &&
           isBeyond(a.high, b.middle);
}

bool standTogether(const Range& a, const Range& b) {
    return isLevel(a.low, b.low) || isLevel(a.high, b.high) || liesWithin(a, b) ||
           coversOrMeets(a, b) || isShiftedLittle(a, b) || isShiftedLittle(b, a);
}

bool isSame(const Range& a, const Range& b) {
    return CZelMath::EqualTo(a.low, b.low, kTolerance) != 0 &&
           CZelMath::EqualTo(a.high, b.high, kTolerance) != 0;
}

/// Extents noted for long lists, whose entities do not fit into the processor's caches. Of the two
/// that a sort compares, one was mostly compared just before in the same place.
class NotedExtents {
public:
    void note(const AcDbObjectId& id) { boxes_[id] = CZelDwg::GetGeomExtents(id); }
    void clear() {
        boxes_.clear();
        last_ = {};
    }
    /// @param place  0 or 1: which of the two compared the entity is.
    AcDbExtents of(const AcDbObjectId& id, std::size_t place) {
        Last& last = last_[place];
        if (last.box != nullptr && last.id == id) return *last.box;
        const auto found = boxes_.find(id);
        if (found == boxes_.end()) return CZelDwg::GetGeomExtents(id);
        last = {id, &found->second};
        return found->second;
    }

private:
    struct Last {
        AcDbObjectId id;
        const AcDbExtents* box = nullptr; // stays where it is until the boxes are cleared
    };
    std::unordered_map<AcDbObjectId, AcDbExtents> boxes_;
    std::array<Last, 2> last_;
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
    const AcDbExtents a = notedExtents().of(id1, 0);
    const AcDbExtents b = notedExtents().of(id2, 1);
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
