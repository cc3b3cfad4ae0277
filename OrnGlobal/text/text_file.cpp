#include "text/text_file.h"

namespace String {

bool WriteStringToFile(CString path, CString text) {
    try {
        CStdioFile file;
        if (!file.Open(path, CFile::modeCreate | CFile::modeWrite | CFile::typeText)) return false;
        file.WriteString(text);
        file.Close();
        return true;
    } catch (CException* failure) {
        failure->Delete();
        return false;
    }
}

CString ReadFile(CString path) {
    try {
        CString text;
        CStdioFile file;
        if (!file.Open(path, CFile::modeRead | CFile::typeText)) return text;
        for (CString line; file.ReadString(line);)
            text += line;
        file.Close();
        return text;
    } catch (CException* failure) {
        failure->Delete();
        return {};
    }
}

} // namespace String
