#include "mfc/exception.h"

#include <algorithm>

#include "mfc/message_box.h"

BOOL CException::GetErrorMessage(LPTSTR text, UINT capacity, UINT* helpContext) const {
    if (helpContext != nullptr) *helpContext = 0;
    const std::wstring message = description();
    if (text == nullptr || capacity == 0) return FALSE;
    const std::size_t length = std::min<std::size_t>(message.size(), capacity - 1);
    std::copy_n(message.begin(), length, text);
    text[length] = 0;
    return message.empty() ? FALSE : TRUE;
}

int CException::ReportError(UINT type, UINT messageId) {
    const std::wstring message = description();
    if (message.empty() && messageId != 0) return AfxMessageBox(messageId, type);
    return AfxMessageBox(message.c_str(), type);
}

std::wstring CMemoryException::description() const { return L"Out of memory."; }
std::wstring CNotSupportedException::description() const {
    return L"An unsupported operation was attempted.";
}
std::wstring CResourceException::description() const {
    return L"A required resource was unavailable.";
}
std::wstring CInvalidArgException::description() const {
    return L"An invalid argument was encountered.";
}

void AfxThrowMemoryException() { throw new CMemoryException; }
void AfxThrowNotSupportedException() { throw new CNotSupportedException; }
void AfxThrowResourceException() { throw new CResourceException; }
void AfxThrowInvalidArgException() { throw new CInvalidArgException; }
void AfxThrowUserException() { throw new CUserException; }
