// Clears the block definitions that an operation added to a drawing.
//
//     SymbolClearTool::SetOldBlockName(db);
//     ... the operation ...
//     SymbolClearTool::SetNewBlockName(db);
//     SymbolClearTool::ClearBlockName(db);
//
// What it remembers of a drawing lasts until it has cleared that drawing. A null database means the
// working one; without any, nothing happens.
#pragma once

#include <map>
#include <set>

#include <afxwin.h>

class AcDbDatabase;

class AFX_EXT_CLASS SymbolClearTool {
public:
    SymbolClearTool() = delete;

    /// Remembers the drawing's block names, in place of earlier ones. Between SetNewBlockName and
    /// ClearBlockName it does nothing: callers may nest.
    static void SetOldBlockName(AcDbDatabase* db);
    static void SetNewBlockName(AcDbDatabase* db);
    /// Erases the definitions named after SetOldBlockName and before SetNewBlockName, and forgets
    /// both. Each is tried once, in the table's order: those that are referred to then stay,
    /// without a message, even when what refers to them is erased later. Nothing, and nothing
    /// forgotten, when either has not been called.
    static void ClearBlockName(AcDbDatabase* db);

private:
    static void RemoveNoUseBlock(std::set<CString>& oldNames, std::set<CString>& newNames,
                                 AcDbDatabase* db);

    static std::map<AcDbDatabase*, std::set<CString>> m_mapDb2OldBlockNames;
    static std::map<AcDbDatabase*, std::set<CString>> m_mapDb2NewBlockNames;
};
