#include "db/text_metrics.h"

#include <cwctype>

#include "db/residence.h"
#include "db/state.h"
#include "db/text_style_table.h"

namespace headless {

namespace {

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

/// The letter that stands for a control code's letter, 0 for none.
wchar_t symbolOf(wchar_t code) {
    switch (std::towlower(static_cast<std::wint_t>(code))) {
    case L'd':
        return L'\u00B0';
    case L'p':
        return L'\u00B1';
    case L'c':
        return L'\u00D8';
    case L'%':
        return L'%';
    default:
        return 0;
    }
}

bool isStroke(wchar_t code) {
    const auto lower = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(code)));
    return lower == L'u' || lower == L'o' || lower == L'k';
}

} // namespace

std::wstring shownText(std::wstring_view text) {
    std::wstring shown;
    shown.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool code = text.substr(i, 2) == L"%%" && i + 2 < text.size();
        if (!code) {
            shown += text[i];
        } else if (const wchar_t symbol = symbolOf(text[i + 2]); symbol != 0) {
            shown += symbol;
            i += 2;
        } else if (isStroke(text[i + 2])) {
            i += 2;
        } else if (i + 4 < text.size() && isDigit(text[i + 2]) && isDigit(text[i + 3]) &&
                   isDigit(text[i + 4])) {
            shown += static_cast<wchar_t>((text[i + 2] - L'0') * 100 + (text[i + 3] - L'0') * 10 +
                                          (text[i + 4] - L'0'));
            i += 4;
        } else {
            shown += text[i];
        }
    }
    return shown;
}

FontRequest fontRequestOf(AcDbObjectId style) {
    const auto* const record = Residence::peek<AcDbTextStyleTableRecord>(style);
    return record == nullptr ? FontRequest() : record->fontRequest();
}

const TextFont& fontOfStyle(AcDbObjectId style) {
    return DbState::current().fonts().find(fontRequestOf(style));
}

} // namespace headless
