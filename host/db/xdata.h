// Extended data: values that applications hang on an object, each application's under its name.
// AcDbObject::xData and setXData are the members; these are the calls beside them.
#pragma once

#include "db/data_item.h"
#include "db/object.h"
#include "db/resbuf.h"
#include "ge/matrix3d.h"

/// Enters an application's name into the working database. RTNORM when it is a name of its table
/// afterwards; RTERROR for a name that no application may have, and without a working database.
int acdbRegApp(const ACHAR* application);

/// How many bytes a chain as setXData takes it counts for: a byte for each value's kind and with it
/// 8 for a real, an application, a layer or a handle, 24 for a point, 4 for a long, 2 for a short
/// integer, 1 for a brace, a byte and its bytes for a chunk, and two bytes and its bytes in UTF-8
/// for a text. RTERROR for a chain that setXData refuses as such.
int acdbXdSize(const resbuf* xdata, Adesk::Int32* result);
/// How many bytes of extended data an object may still get. RTERROR for an unknown name.
int acdbXdRoom(const ads_name object, Adesk::Int32* result);

namespace headless {

constexpr std::size_t kMostXdataBytes = 16383; // of one object

/// True for the codes that setXData takes.
[[nodiscard]] bool isXdataCode(int code);

[[nodiscard]] std::size_t xdataBytes(const DataItems& items);

/// Takes the data along that belong to a place: world positions (1011) go with the object,
/// displacements (1012) and directions (1013) turn with it, which scales all of them but
/// directions, and distances (1041) and factors (1042) too.
void transformXdata(AcDbObject& object, const AcGeMatrix3d& transform);

/// The items of a chain, if setXData takes it whatever the object; see there for the refusals.
Acad::ErrorStatus readXdata(const resbuf* chain, DataItems& items);

} // namespace headless
