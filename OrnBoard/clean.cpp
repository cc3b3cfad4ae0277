#include "clean.h"

#include <algorithm>
#include <map>
#include <set>

#include <dbsymtb.h>

#include "blocks/symbol_clear_tool.h"
#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"
#include "text/string_list.h"

namespace board {
namespace {

using Names = std::set<CString>;

std::map<AcDbDatabase*, Names>& marks() {
    static std::map<AcDbDatabase*, Names> all;
    return all;
}

std::vector<CString> difference(const Names& names, const Names& without) {
    std::vector<CString> rest;
    std::ranges::set_difference(names, without, std::back_inserter(rest));
    return rest;
}

/// Erases definitions, the latest first, as most blocks come after those that they hold; again
/// while that lets go of others. The library's tool tries each once, in the table's order.
void eraseUnused(const std::vector<CString>& names, AcDbDatabase* db) {
    AcDbObjectIdArray ids;
    AcUtSymTbl::collectSymbolIds(AcDbBlockTableRecord::desc(), ids, db);
    const Names wanted(names.begin(), names.end());
    for (bool erased = true; erased;) {
        erased = false;
        for (int i = ids.length() - 1; i >= 0; --i) {
            const WriteHandle<AcDbBlockTableRecord> block(ids[i]);
            const ACHAR* name = nullptr;
            if (block && block->getName(name) == Acad::eOk && wanted.contains(name))
                erased = block->erase() == Acad::eOk || erased;
        }
    }
}

CString line(const wchar_t* heading, const std::vector<CString>& names) {
    const CString list = kelmor::SplicingString(names, L", ", 1);
    return CString(heading) + (list.IsEmpty() ? CString(L"none") : list) + L"\n";
}

} // namespace

void markBlocks(AcDbDatabase* db) {
    if (db == nullptr) return;
    marks()[db] = AcUtSymTbl::GetAllBlockName(db);
    SymbolClearTool::SetOldBlockName(db);
}

BlockCleaning clearAddedBlocks(AcDbDatabase* db) {
    const auto mark = marks().find(db);
    if (mark == marks().end()) return {.marked = false};
    const Names after = AcUtSymTbl::GetAllBlockName(db);
    SymbolClearTool::SetNewBlockName(db);
    SymbolClearTool::ClearBlockName(db);
    eraseUnused(difference(AcUtSymTbl::GetAllBlockName(db), mark->second), db);
    const Names left = AcUtSymTbl::GetAllBlockName(db);
    const BlockCleaning cleaning{.cleared = difference(after, left),
                                 .kept = difference(left, mark->second)};
    marks().erase(mark);
    return cleaning;
}

BlockCleaning clearBlocksOf(AcDbDatabase* db, const std::function<void()>& work) {
    markBlocks(db);
    work();
    return clearAddedBlocks(db);
}

void forgetMark(AcDbDatabase* db) { marks().erase(db); }

CString cleaningReport(const BlockCleaning& cleaning) {
    if (!cleaning.marked) return L"There is no mark.\n";
    CString report = line(L"Blocks cleared: ", cleaning.cleared);
    if (!cleaning.kept.empty()) report += line(L"Still in use: ", cleaning.kept);
    return report;
}

} // namespace board
