#include "blocks/symbol_clear_tool.h"

#include <algorithm>

#include <dbsymtb.h>

#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"
#include "frame/working_database.h"

std::map<AcDbDatabase*, std::set<CString>> SymbolClearTool::m_mapDb2OldBlockNames;
std::map<AcDbDatabase*, std::set<CString>> SymbolClearTool::m_mapDb2NewBlockNames;

namespace {

/// Erases the definitions of those names that the host lets go of.
void eraseBlocks(const std::set<CString>& names, AcDbDatabase* db) {
    AcDbObjectIdArray ids;
    AcUtSymTbl::collectSymbolIds(AcDbBlockTableRecord::desc(), ids, db);
    for (int i = 0; i < ids.length(); ++i) {
        const WriteHandle<AcDbBlockTableRecord> block(ids[i]);
        const ACHAR* name = nullptr;
        if (block && block->getName(name) == Acad::eOk && names.contains(name)) block->erase();
    }
}

} // namespace

void SymbolClearTool::SetOldBlockName(AcDbDatabase* db) {
    db = frame::orWorking(db);
    if (db != nullptr && !m_mapDb2NewBlockNames.contains(db))
        m_mapDb2OldBlockNames[db] = AcUtSymTbl::GetAllBlockName(db);
}

void SymbolClearTool::SetNewBlockName(AcDbDatabase* db) {
    db = frame::orWorking(db);
    if (db != nullptr) m_mapDb2NewBlockNames[db] = AcUtSymTbl::GetAllBlockName(db);
}

void SymbolClearTool::ClearBlockName(AcDbDatabase* db) {
    db = frame::orWorking(db);
    if (db == nullptr) return;
    const auto before = m_mapDb2OldBlockNames.find(db);
    const auto after = m_mapDb2NewBlockNames.find(db);
    if (before == m_mapDb2OldBlockNames.end() || before->second.empty()) return;
    if (after == m_mapDb2NewBlockNames.end() || after->second.empty()) return;
    RemoveNoUseBlock(before->second, after->second, db);
    m_mapDb2OldBlockNames.erase(before);
    m_mapDb2NewBlockNames.erase(after);
}

void SymbolClearTool::RemoveNoUseBlock(std::set<CString>& oldNames, std::set<CString>& newNames,
                                       AcDbDatabase* db) {
    std::set<CString> added;
    std::ranges::set_difference(newNames, oldNames, std::inserter(added, added.end()));
    eraseBlocks(added, db);
}
