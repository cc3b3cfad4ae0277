// The entities of a drawing's model space, one by one. Inside the module only.
#pragma once

#include <functional>

#include <dbmain.h>

namespace board {

/// Calls `visit` with each entity that can be opened, open for reading; nothing for null.
void forEachModelEntity(AcDbDatabase* db, const std::function<void(const AcDbEntity&)>& visit);

} // namespace board
