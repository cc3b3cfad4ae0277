#include "OrnCore/product_folder.h"

#include <algorithm>

namespace {

int lastSeparator(const CString& path) {
    return (std::max)(path.ReverseFind(L'\\'), path.ReverseFind(L'/'));
}

} // namespace

CString orncore::productFolder() {
    wchar_t file[MAX_PATH] = L"";
    GetModuleFileNameW(GetModuleHandleW(L"OrnBoard.arx"), file, MAX_PATH);
    CString path(file);
    if (const int separator = lastSeparator(path); separator != 0) path = path.Left(separator);
    if (const int separator = lastSeparator(path); separator >= 1) path = path.Left(separator);
    return path;
}
