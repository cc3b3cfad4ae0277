// An object as a list of groups: what acdbEntGet tells, and what selections are filtered by.
#pragma once

#include <vector>

#include "db/data_item.h"
#include "db/resbuf.h"

class AcDbObject;

namespace headless {

/// The groups that the object would have in a file of the newest version, as far as its class is
/// modelled. Angles are radians; coordinates are the file's: those of flat entities are in the
/// object coordinate system of their normal. Values that files take for granted are left out.
class ObjectGroups {
public:
    /// @param object  open or not.
    explicit ObjectGroups(const AcDbObject& object);

    /// First the id (-1), the kind's name (0), the owner (330) and the handle (5); an entity's
    /// space (67) and layout (410) behind its first marker.
    const DataItems& items() const { return items_; }
    /// True for a code that the class knows, whether or not the object has such a group.
    bool models(int code) const;
    /// True for points of two coordinates, whose z means nothing.
    bool isFlat(int code) const;

private:
    DataItems items_;
    std::vector<std::int16_t> codes_;
    std::vector<std::int16_t> flatCodes_;
};

/// True when an entity stands on a sheet, and the name of its layout; empty when it is in a block.
[[nodiscard]] bool isOnSheet(const AcDbObject& entity);
[[nodiscard]] std::wstring layoutName(const AcDbObject& entity);

} // namespace headless

/// The object's groups as a chain that the caller frees with acutRelRb; null for a name that no
/// object has, or whose object is erased.
resbuf* acdbEntGet(const ads_name name);
