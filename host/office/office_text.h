// Texts as the office has them.
#pragma once

#include <string>

#include <rtl/ustring.hxx>

namespace headless::excel {

inline rtl::OUString wide(const std::string& utf8) {
    return {utf8.data(), static_cast<sal_Int32>(utf8.size()), RTL_TEXTENCODING_UTF8};
}

inline std::string narrow(const rtl::OUString& text) {
    return rtl::OUStringToOString(text, RTL_TEXTENCODING_UTF8).getStr();
}

} // namespace headless::excel
