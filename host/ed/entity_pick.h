// What the prompts for one entity share: asking, and finding what lies under the pick.
#pragma once

#include <optional>
#include <string_view>

#include "db/database.h"
#include "db/resbuf.h"
#include "ed/prompt_answers.h"
#include "ed/system_variables.h"

namespace headless {

/// The answer to a prompt for an entity.
struct EntityPick {
    int result = RTERROR;          // RTNORM, or why there is no entity; ERRNO tells more
    std::optional<AcGePoint3d> at; // where it was picked, in user coordinates
    AcDbObjectId entity;           // null unless RTNORM
};

/// Asks until there is an entity or none is to come, see acedEntSel.
/// @param prompt  null: "Select object: ".
[[nodiscard]] EntityPick askEntity(const AcDbDatabase& db, const ACHAR* prompt,
                                   const PromptRules& rules);

/// What the pick box around a point holds, the newest.
/// @param mode  empty, or "L" for the last entity wherever it is.
[[nodiscard]] EntityPick pickEntity(const AcDbDatabase& db, const AcGePoint3d& at,
                                    std::wstring_view mode = {});

/// RTERROR with that in ERRNO.
int failWith(HostError error);

/// Tells a caller of the C interface where and what was picked, as far as there is such.
void tell(const EntityPick& pick, ads_name entity, ads_point point);

} // namespace headless
