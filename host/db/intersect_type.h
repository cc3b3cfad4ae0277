// Which of two entities goes on beyond its ends where their intersections are looked for.
#pragma once

namespace AcDb {

enum Intersect { kOnBothOperands = 0, kExtendThis = 1, kExtendArg = 2, kExtendBoth = 3 };

} // namespace AcDb
