#include "headless/leftovers.h"

#include "db/database.h"
#include "db/residence.h"
#include "db/state.h"
#include "dxf/read_report.h"
#include "ed/state.h"
#include "win/bstr.h"
#include "win/code_page.h"
#include "win/dispatch.h"
#include "win/safe_array.h"

namespace headless {
namespace {

std::string describe(const OpenObject& open) {
    const std::string name = toUtf8(open.kind->name()) + " " + handleText(open.id.handle());
    switch (open.mode) {
    case AcDb::kForWrite:
        return name + " is open for writing";
    case AcDb::kForNotify:
        return name + " is open for notification";
    case AcDb::kForRead:
        break;
    }
    return name + " is open for reading" +
           (open.readers > 1 ? " " + std::to_string(open.readers) + " times" : "");
}

void addOpenObjects(const AcDbDatabase& database, std::vector<std::string>& leftovers) {
    for (const OpenObject& open : Residence::openObjects(database)) {
        leftovers.push_back(describe(open));
    }
}

void addHighlights(const AcDbDatabase& database, std::vector<std::string>& leftovers) {
    if (const std::size_t shown = database.highlights().shown(); shown > 0)
        leftovers.push_back(std::to_string(shown) + " entities are still highlighted");
}

void addLocks(const AcApDocument& document, std::vector<std::string>& leftovers) {
    const std::size_t locks = Documents::lockCount(document);
    if (locks == 0) return;
    leftovers.push_back("document " + toUtf8(document.docTitle()) + " is locked " +
                        std::to_string(locks) + " times");
}

} // namespace

namespace {

std::size_t risen(std::size_t from, std::size_t to) { return to > from ? to - from : 0; }

} // namespace

ProcessBaseline::ProcessBaseline()
    : strings_(liveBstrCount()), automationReferences_(liveAutomationReferences()),
      arrays_(liveSafeArrayCount()) {}

std::size_t ProcessBaseline::newStrings() const { return risen(strings_, liveBstrCount()); }

std::size_t ProcessBaseline::newAutomationReferences() const {
    return risen(automationReferences_, liveAutomationReferences());
}

std::size_t ProcessBaseline::newArrays() const { return risen(arrays_, liveSafeArrayCount()); }

std::vector<std::string> findLeftovers(const EdState& ed, DbState& db) {
    std::vector<std::string> leftovers;
    for (const AcDbDatabase* database : db.databases) {
        addOpenObjects(*database, leftovers);
        addHighlights(*database, leftovers);
        if (ed.documents.ofDatabase(database) == nullptr) {
            leftovers.emplace_back("a database that belongs to no document was not deleted");
        }
    }
    for (const auto& document : ed.documents.all()) {
        addLocks(*document, leftovers);
    }
    if (const int open = db.services.workingTransactionManager()->numActiveTransactions(); open > 0)
        leftovers.push_back(std::to_string(open) + " transactions were not ended");
    if (const std::size_t sets = ed.selections.openCount(); sets > 0)
        leftovers.push_back(std::to_string(sets) + " selection sets were not freed");
    if (const std::size_t filters = ed.messageFilters.count(); filters > 0)
        leftovers.push_back(std::to_string(filters) + " message filters were not removed");
    if (db.liveResultBuffers > 0) {
        leftovers.push_back(std::to_string(db.liveResultBuffers) +
                            " result buffers were not released");
    }
    return leftovers;
}

} // namespace headless
