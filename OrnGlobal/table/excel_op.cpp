#include "table/excel_op.h"

#include <algorithm>
#include <string>

#include "table/excel_members.h"

using namespace excel;

namespace {

constexpr LPCTSTR kProgram = L"Excel.Application";
constexpr LPCTSTR kNoProgram = L"应用程序创建失败，请确保安装了Office2003或以上版本!";
constexpr LPCTSTR kNoBook = L"Book获取失败!";

/// Puts the object that `find` answers into the holder; false when there is none.
template <class Find>
bool hold(COleDispatchDriver& holder, Find find) {
    holder.ReleaseDispatch();
    succeeds([&] { holder = find(); });
    return holder.m_lpDispatch != nullptr;
}

COleDispatchDriver itemOf(COleDispatchDriver& collection, short index) {
    static const BYTE kinds[] = VTS_VARIANT;
    const COleVariant number(index);
    return getObject(collection, kItem, DISPATCH_PROPERTYGET, kinds,
                     static_cast<LPCVARIANT>(number));
}

/// Keeps the application from asking while in scope: nobody could answer one that is not seen.
class NoQuestions {
public:
    explicit NoQuestions(COleDispatchDriver& application) : application_(application) {
        succeeds([&] {
            application_.GetProperty(kDisplayAlerts, VT_BOOL, &before_);
            putFlag(application_, kDisplayAlerts, 0);
        });
    }
    ~NoQuestions() {
        succeeds([&] { putFlag(application_, kDisplayAlerts, before_); });
    }
    NoQuestions(const NoQuestions&) = delete;
    NoQuestions& operator=(const NoQuestions&) = delete;

private:
    COleDispatchDriver& application_;
    BOOL before_ = TRUE;
};

} // namespace

int CExcelOP::CreateApp() { return m_app.CreateDispatch(kProgram) ? 1 : refuse(kNoProgram); }

int CExcelOP::CreateWorkbooks() {
    if (m_app.m_lpDispatch == nullptr) return refuse(L"请先创建应用程序!");
    if (hold(m_workbooks, [&] { return getObject(m_app, kWorkbooks); })) return 1;
    return refuse(L"WorkBooks创建失败!");
}

int CExcelOP::CreateWorkbook() {
    if (m_workbooks.m_lpDispatch == nullptr) return refuse(L"WorkBooks为空!");
    static const BYTE kinds[] = VTS_VARIANT;
    const COleVariant noTemplate = missing();
    const bool made = hold(m_workbook, [&] {
        return getObject(m_workbooks, kAdd, DISPATCH_METHOD, kinds,
                         static_cast<LPCVARIANT>(noTemplate));
    });
    return made ? 1 : refuse(L"WorkBook创建失败!");
}

int CExcelOP::CreateWorksheets() {
    if (m_workbook.m_lpDispatch == nullptr) return refuse(L"WorkBook为空!");
    if (hold(m_worksheets, [&] { return getObject(m_workbook, kWorksheets); })) return 1;
    return refuse(L"WorkSheets创建失败!");
}

int CExcelOP::CreateWorksheet(short index) {
    if (m_worksheets.m_lpDispatch == nullptr) return refuse(L"WorkSheets为空!");
    if (hold(m_worksheet, [&] { return itemOf(m_worksheets, index); })) return 1;
    return refuse(L"WorkSheet创建失败!");
}

int CExcelOP::AddWorksheet(short n) {
    if (m_worksheets.m_lpDispatch == nullptr) return refuse(L"WorkSheets为空!");
    return attempt([&] {
        COleDispatchDriver before = itemOf(m_worksheets, static_cast<short>(n - 1));
        static const BYTE kinds[] = VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT;
        const COleVariant leftOut = missing();
        VARIANT after{};
        after.vt = VT_DISPATCH;
        after.pdispVal = before;
        const LPCVARIANT none = leftOut;
        (void)getObject(m_worksheets, kAdd, DISPATCH_METHOD, kinds, none, &after, none, none);
    });
}

void CExcelOP::ShowApp(int visible) {
    if (m_app.m_lpDispatch == nullptr) return;
    constexpr long kWindow = 3; // Callers' users are used to the window that it gives.
    succeeds([&] { put(m_app, kWindowState, kWindow); });
    succeeds([&] { putFlag(m_app, kVisible, visible); });
}

int CExcelOP::Create(short sheetIndex, int visible) {
    const bool made = CreateApp() != 0 && CreateWorkbooks() != 0 && CreateWorkbook() != 0 &&
                      CreateWorksheets() != 0 && CreateWorksheet(sheetIndex) != 0;
    if (!made) return 0;
    ShowApp(visible);
    return 1;
}

int CExcelOP::OpenWorkbook(CString path) {
    // It is the workbooks that are missing; callers know the message as it is.
    if (m_workbooks.m_lpDispatch == nullptr) return refuse(L"WorkSheets为空!");
    static const BYTE kinds[] = VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT
        VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT
            VTS_VARIANT VTS_VARIANT VTS_VARIANT;
    const COleVariant file(path);
    const COleVariant leftOut = missing();
    const LPCVARIANT name = file;
    const LPCVARIANT none = leftOut;
    const bool opened = hold(m_workbook, [&] {
        return getObject(m_workbooks, kOpen, DISPATCH_METHOD, kinds, name, none, none, none, none,
                         none, none, none, none, none, none, none, none, none, none);
    });
    return opened ? 1 : refuse(L"文件打开失败!");
}

int CExcelOP::Open(CString path, short sheetIndex, int visible) {
    const bool opened = CreateApp() != 0 && CreateWorkbooks() != 0 && OpenWorkbook(path) != 0 &&
                        CreateWorksheets() != 0 && CreateWorksheet(sheetIndex) != 0;
    if (!opened) return 0;
    ShowApp(visible);
    return 1;
}

int CExcelOP::SaveWorkbook() {
    if (m_workbook.m_lpDispatch == nullptr) return refuse(kNoBook);
    return attempt([&] { call(m_workbook, kSave); });
}

int CExcelOP::SaveWorkbookAs(CString path) {
    if (m_workbook.m_lpDispatch == nullptr) return refuse(kNoBook);
    // The access mode is the only plain number among the arguments.
    static const BYTE kinds[] = VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT
        VTS_VARIANT VTS_I4 VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT;
    const COleVariant file(path);
    const COleVariant leftOut = missing();
    const LPCVARIANT name = file;
    const LPCVARIANT none = leftOut;
    constexpr long kAccessMode = 0;
    return attempt([&] {
        m_workbook.InvokeHelper(kSaveAs, DISPATCH_METHOD, VT_EMPTY, nullptr, kinds, name, none,
                                none, none, none, none, kAccessMode, none, none, none, none, none);
    });
}

int CExcelOP::SaveWorkbookOver(CString path) {
    const NoQuestions quiet(m_app);
    return SaveWorkbookAs(path);
}

int CExcelOP::CloseWorkbook() {
    if (m_app.m_lpDispatch == nullptr || m_workbook.m_lpDispatch == nullptr) return 0;
    static const BYTE kinds[] = VTS_VARIANT VTS_VARIANT VTS_VARIANT;
    const COleVariant saveChanges(short{0});
    const COleVariant fileName(short{1});
    const COleVariant route(short{0});
    const int closed = attempt([&] {
        m_workbook.InvokeHelper(kCloseBook, DISPATCH_METHOD, VT_EMPTY, nullptr, kinds,
                                static_cast<LPCVARIANT>(saveChanges),
                                static_cast<LPCVARIANT>(fileName), static_cast<LPCVARIANT>(route));
    });
    if (closed == 0) return 0;
    return hold(m_workbook, [&] { return getObject(m_app, kActiveWorkbook); }) ? 1 : 0;
}

void CExcelOP::Close() {
    if (m_app.m_lpDispatch != nullptr) succeeds([&] { call(m_app, kQuit); });
    for (COleDispatchDriver* holder : {&m_item, &m_part, &m_range, &m_worksheet, &m_worksheets,
                                       &m_workbook, &m_workbooks, &m_app}) {
        holder->ReleaseDispatch();
    }
}

long CExcelOP::GetSheetsCount() {
    LONG count = 0;
    if (m_worksheets.m_lpDispatch == nullptr) return count;
    succeeds(
        [&] { m_worksheets.InvokeHelper(kCount, DISPATCH_PROPERTYGET, VT_I4, &count, nullptr); });
    return count;
}

int CExcelOP::SetActiveSheet(short index) {
    if (m_worksheets.m_lpDispatch == nullptr) return 0;
    if (!hold(m_worksheet, [&] { return itemOf(m_worksheets, index); })) return 0;
    return succeeds([&] { call(m_worksheet, kActivate); }) ? 1 : 0;
}

int CExcelOP::SetSheetName(short index, CString name) {
    if (m_worksheets.m_lpDispatch == nullptr) return 0;
    COleDispatchDriver sheet;
    if (!hold(sheet, [&] { return itemOf(m_worksheets, index); })) return 0;
    return attempt([&] { put(sheet, kName, name); });
}

int CExcelOP::DeleteSheet(short index) {
    if (m_worksheets.m_lpDispatch == nullptr) return 0;
    COleDispatchDriver sheet;
    if (!hold(sheet, [&] { return itemOf(m_worksheets, index); })) return 0;
    const NoQuestions quiet(m_app);
    return attempt([&] { call(sheet, kDelete); });
}

int CExcelOP::GetCellRange(CString cell1, CString cell2) {
    if (m_worksheet.m_lpDispatch == nullptr) return refuse(L"Sheet获取失败!");
    static const BYTE kinds[] = VTS_VARIANT VTS_VARIANT;
    const COleVariant first(cell1);
    const COleVariant last(cell2);
    const bool found = hold(m_range, [&] {
        return getObject(m_worksheet, kRange, DISPATCH_PROPERTYGET, kinds,
                         static_cast<LPCVARIANT>(first), static_cast<LPCVARIANT>(last));
    });
    return found ? 1 : refuse(L"Range获取失败!");
}

CString CExcelOP::GetColumnName(int n) {
    CString name;
    constexpr int kLetters = 26;
    // Two-letter names count on 0 being the last letter of the round before.
    if (n >= 0 && n <= kLetters) name = n == 0 ? L'Z' : static_cast<wchar_t>(64 + n);
    return name;
}

CString CExcelOP::GetCellName(int col, int row) {
    constexpr int kLetters = 26;
    constexpr int kTwoLetters = kLetters * kLetters;
    CString name;
    if (col < 1) return name;
    if (col <= kLetters) {
        name = GetColumnName(col);
    } else if (col <= kTwoLetters) {
        name = GetColumnName((col - 1) / kLetters) + GetColumnName(col % kLetters);
    } else {
        name = GetColumnName(col / kTwoLetters) + GetColumnName(col / kLetters) +
               GetColumnName(col - (col / kLetters) * kLetters);
    }
    // Names are asked for cell by cell, which Format is slow for.
    wchar_t digits[12] = {};
    std::ranges::copy(std::to_string(row), digits);
    name += digits;
    return name;
}
