#include "db/state.h"

#include <cstdio>
#include <cstdlib>

#include "db/database.h"
#include "db/font.h"

ACRX_CONS_DEFINE_MEMBERS(AcDbHostApplicationServices, AcRxObject, 0)

AcDbHostApplicationServices* acdbHostApplicationServices() {
    return &headless::DbState::current().services;
}

namespace headless {
namespace {

DbState*& newestState() {
    static DbState* newest = nullptr;
    return newest;
}

} // namespace

DbState::DbState() : SessionState(newestState()) {}

DbState::DbState(ProcessWide) {}

DbState::~DbState() {
    for (AcDbDatabase* const db : databases)
        db->state_ = nullptr;
}

DbState& DbState::current() {
    // Never destroyed: databases held by other statics may outlive it.
    static auto* const processWide = new DbState{ProcessWide{}};
    DbState* const newest = newestState();
    return newest != nullptr ? *newest : *processWide;
}

SavedDrawing DbState::save(AcDbDatabase& db, const std::wstring& file) const {
    if (!writer) return {false, "drawings cannot be saved here"};
    return writer(db, file);
}

FontLibrary& DbState::fonts() {
    if (fonts_ == nullptr) fonts_ = std::make_unique<FontLibrary>();
    return *fonts_;
}

void reportOpenViolation(const AcDbObject& object, const char* needed) {
    const auto& handler = DbState::current().openViolation;
    if (handler) {
        handler(object, needed);
        return;
    }
    const auto handle = static_cast<unsigned long long>(object.objectId().handle());
    std::fprintf(stderr, "%ls %llX is used but not open for %s; the session cannot go on.\n",
                 object.isA()->name(), handle, needed);
    std::abort();
}

} // namespace headless
