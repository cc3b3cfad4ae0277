#include "argument_text.h"

#include "text/string_list.h"
#include "win/code_page.h"

namespace orn {

CString wide(const std::string& utf8) { return headless::fromUtf8(utf8).c_str(); }

std::vector<CString> namesIn(const std::string& list) {
    return kelmor::splitLongString(wide(list), L",", 0, 0);
}

} // namespace orn
