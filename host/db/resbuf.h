// Result buffers, entity names and the other plain types of the platform's C interface.
#pragma once

#include "db/object_id.h"

using ads_real = double;
using ads_point = ads_real[3];
using ads_matrix = ads_real[4][4];
/// Names an entity (first member: its id) or a selection set in calls of the C interface.
using ads_name = Adesk::IntDbId[2];

inline constexpr int RTNORM = 5100;
inline constexpr int RTERROR = -5001;
inline constexpr int RTCAN = -5002;
inline constexpr int RTREJ = -5003;
inline constexpr int RTFAIL = -5004;
inline constexpr int RTKWORD = -5005;

inline constexpr short RTNONE = 5000;
inline constexpr short RTREAL = 5001;
inline constexpr short RTPOINT = 5002;
inline constexpr short RTSHORT = 5003;
inline constexpr short RTANG = 5004;
inline constexpr short RTSTR = 5005;
inline constexpr short RTENAME = 5006;
inline constexpr short RTPICKS = 5007;
inline constexpr short RTORINT = 5008;
inline constexpr short RT3DPOINT = 5009;
inline constexpr short RTLONG = 5010;
inline constexpr short RTVOID = 5014;
inline constexpr short RTLB = 5016;
inline constexpr short RTLE = 5017;
inline constexpr short RTDOTE = 5018;
inline constexpr short RTNIL = 5019;
inline constexpr short RTDXF0 = 5020;
inline constexpr short RTT = 5021;
inline constexpr short RTRESBUF = 5023;

struct ads_binary {
    short clen;
    char* buf;
};

union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    ACHAR* rstring;
    Adesk::IntDbId rlname[2];
    Adesk::Int32 rlong;
    Adesk::Int64 mnInt64;
    ads_binary rbinary;
    unsigned char ihandle[8];
};

/// One value of a list; `restype` (RTSTR, ... or a group code) says which member of `resval` holds.
struct resbuf {
    resbuf* rbnext;
    short restype;
    ads_u_val resval;
};

/// A buffer whose value is all zeros. Freed, with those that follow it, by acutRelRb.
resbuf* acutNewRb(int type);
/// Frees the chain from `chain` on with its texts and binary chunks. RTNORM, also for null.
int acutRelRb(resbuf* chain);
/// A chain of type and value pairs up to the type 0 or RTNONE. Values by type: texts `const
/// ACHAR*`, reals and angles `double`, points `ads_point`, integers `int`, names `ads_name`; the
/// list marks (RTLB and so on) take none. A group code stands for the kind of value it has in
/// drawing files, but code 0 ends the list: write RTDXF0 for it. Null for an unknown type.
resbuf* acutBuildList(int type, ...);

/// A copy that acutDelString frees; null for null.
ACHAR* acutNewString(const ACHAR* text);
/// Frees the text and sets the pointer to null.
void acutDelString(ACHAR*& text);

/// eNullObjectId for a null id.
Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id);
/// eInvalidAdsName, leaving `id`, unless the name is that of an object of a living database.
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);

inline void ads_name_clear(ads_name& name) { name[0] = name[1] = 0; }
inline void ads_name_set(const ads_name& from, ads_name& to) {
    to[0] = from[0];
    to[1] = from[1];
}
inline bool ads_name_equal(const ads_name& a, const ads_name& b) {
    return a[0] == b[0] && a[1] == b[1];
}
inline bool ads_name_nil(const ads_name& name) { return name[0] == 0 && name[1] == 0; }
inline void ads_point_set(const ads_point& from, ads_point& to) {
    for (int i = 0; i < 3; ++i)
        to[i] = from[i];
}

namespace headless {

/// What a result buffer of a type or a group of a code holds.
enum class ValueKind {
    kNothing,
    kReal,
    kPoint,
    kInt16,
    kInt32,
    kInt64,
    kText,
    kName,
    kHandle,
    kBinary
};
[[nodiscard]] ValueKind valueKind(int type) noexcept;

} // namespace headless
