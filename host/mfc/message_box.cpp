#include "mfc/message_box.h"

#include "mfc/extension_module.h"
#include "mfc/resource.h"

int AfxMessageBox(LPCTSTR text, UINT type, UINT /*helpId*/) {
    return MessageBoxW(nullptr, text, AfxGetAppName(), type);
}

int AfxMessageBox(UINT textId, UINT type, UINT helpId) {
    const auto text = headless::findResourceString(textId);
    return text ? AfxMessageBox(text->c_str(), type, helpId) : -1;
}
