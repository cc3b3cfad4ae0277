#include "OrnCore/rw_xdata.h"

#include <acdb.h>
#include <acutads.h>
#include <dbmain.h>
#include <dbobjptr.h>
#include <dbsymtb.h>
#include <geassign.h>

#include "OrnCore/named_records.h"

namespace {

constexpr short kNameCode = AcDb::kDxfControlString;
constexpr short kIntCode = AcDb::kDxfInt32;
constexpr short kRealCode = AcDb::kDxfReal;
constexpr short kTextCode = AcDb::kDxfText;

/// The last buffer of a list and the last application's name in it; null where there is none.
struct ListEnd {
    resbuf* last = nullptr;
    const wchar_t* application = nullptr;

    explicit ListEnd(resbuf* chain) {
        for (; chain != nullptr; chain = chain->rbnext) {
            last = chain;
            if (chain->restype == kNameCode) application = chain->resval.rstring;
        }
    }
};

/// Appends a list to another.
void append(resbuf*& chain, resbuf* last, resbuf* more) {
    if (last == nullptr)
        chain = more;
    else
        last->rbnext = more;
}

template <class Value>
void addValue(const wchar_t* application, resbuf*& chain, short code, Value value) {
    const ListEnd end(chain);
    resbuf* const item = acutBuildList(code, value, RTNONE);
    if (item == nullptr) return;
    const bool named = application != nullptr && *application != L'\0';
    const bool known = end.application != nullptr && CString(end.application) == application;
    if (!named || known) {
        append(chain, end.last, item);
        return;
    }
    resbuf* const name = acutBuildList(kNameCode, application, RTNONE);
    name->rbnext = item;
    append(chain, end.last, name);
}

/// The value at the cursor, which steps behind it; null at the end or when it has another code.
const resbuf* takeValue(resbuf*& cursor, short code) {
    while (cursor != nullptr && cursor->restype == kNameCode)
        cursor = cursor->rbnext;
    if (cursor == nullptr) return nullptr;
    const resbuf* const item = cursor;
    cursor = cursor->rbnext;
    return item->restype == code ? item : nullptr;
}

bool isPoint(const resbuf& item) {
    return item.restype >= AcDb::kDxfXdXCoord && item.restype <= AcDb::kDxfXdWorldXDir;
}

bool registerApplication(const AcDbDatabase& db, const CString& name) {
    const auto leaveAsMade = [](AcDbRegAppTableRecord&) {};
    return !orncore::findOrAdd<AcDbRegAppTable, AcDbRegAppTableRecord>(db.regAppTableId(), name,
                                                                       leaveAsMade)
                .isNull();
}

} // namespace

void rwXData::addXdata(wchar_t const* appName, resbuf*& chain, int value) {
    addValue(appName, chain, kIntCode, value);
}

void rwXData::addXdata(wchar_t const* appName, resbuf*& chain, double value) {
    addValue(appName, chain, kRealCode, value);
}

void rwXData::addXdata(wchar_t const* appName, resbuf*& chain, CString const& value) {
    addValue(appName, chain, kTextCode, value.GetString());
}

int rwXData::getXdata(resbuf*& cursor, int& value) {
    const resbuf* const item = takeValue(cursor, kIntCode);
    if (item == nullptr) return 0;
    value = item->resval.rlong;
    return 1;
}

int rwXData::getXdata(resbuf*& cursor, double& value) {
    const resbuf* const item = takeValue(cursor, kRealCode);
    if (item == nullptr) return 0;
    value = item->resval.rreal;
    return 1;
}

int rwXData::getXdata(resbuf*& cursor, CString& value) {
    const resbuf* const item = takeValue(cursor, kTextCode);
    if (item == nullptr) return 0;
    value = item->resval.rstring;
    return 1;
}

AcGePoint3d rwXData::ReadXdataPnt(const AcDbObjectId& id, const CString& key) {
    const AcDbObjectPointer<AcDbObject> object(id);
    if (object.openStatus() != Acad::eOk) return AcGePoint3d::kOrigin;
    resbuf* const data = object->xData(key);
    const resbuf* item = data;
    while (item != nullptr && !isPoint(*item))
        item = item->rbnext;
    const AcGePoint3d point = item == nullptr ? AcGePoint3d::kOrigin : asPnt3d(item->resval.rpoint);
    acutRelRb(data);
    return point;
}

int rwXData::WriteXdataPnt(const AcDbObjectId& id, const CString& key, const AcGePoint3d& point) {
    const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    if (object.openStatus() != Acad::eOk) return 0;
    if (!registerApplication(*object->database(), key)) return 0;
    // A world position: the platform moves it along with the entity.
    resbuf* const data = acutBuildList(AcDb::kDxfRegAppName, key.GetString(),
                                       AcDb::kDxfXdWorldXCoord, asDblArray(point), RTNONE);
    const Acad::ErrorStatus status = object->setXData(data);
    acutRelRb(data);
    return status == Acad::eOk ? 1 : 0;
}
