// Texts of drawings in their code pages, with escapes amid raw bytes.
#include <gtest/gtest.h>

#include "dxf/text_decoder.h"
#include "win/code_page.h"

namespace headless {
namespace {

TEST(TextDecoder, ResolvesEscapesAmidRawBytes) {
    const TextDecoder utf8(1252, true);
    const TextDecoder gbk(936, false);
    const TextDecoder latin(1252, false);
    const TextDecoder cyrillic(1251, false);
    const TextDecoder dos(850, false);
    struct Case {
        const char* name;
        const TextDecoder& decoder;
        std::string bytes;
        std::wstring text;
    };
    const Case cases[] = {
        {"ASCII", utf8, "WALL-1", L"WALL-1"},
        {"raw UTF-8 and an escape in one name", utf8, "\xC3\x84-\\U+00FC", L"\u00C4-\u00FC"},
        {"no UTF-8: the code page", utf8, "caf\xE9", L"caf\u00E9"},
        {"GBK", gbk, "\xD6\xD0\xCE\xC4", L"\u4E2D\u6587"},
        {"a backslash that ends a GBK character", gbk, "\x81\\U+0041", L"\u4E57U+0041"},
        {"an escape behind GBK bytes", gbk, "\xD6\xD0\\U+6587", L"\u4E2D\u6587"},
        {"ANSI_1251", cyrillic, "\xD1\xF2\xE5\xED\xE0", L"\u0421\u0442\u0435\u043D\u0430"},
        {"dos850", dos, "\x81\x84", L"\u00FC\u00E4"},
        {"escape in small letters", latin, "\\U+00e9", L"\u00E9"},
        {"a character beyond the basic plane", latin, "\\U+D83D\\U+DE00", L"\U0001F600"},
        {"half of a surrogate pair", latin, "\\U+D83Dx", L"\uFFFDx"},
        {"Japanese by its code page", latin, "\\M+182A0", L"\u3042"},
        {"Traditional Chinese", latin, "\\M+2A4A4", L"\u4E2D"},
        {"Korean", latin, "\\M+3B0A1", L"\uAC00"},
        {"Simplified Chinese", latin, "a\\M+5D6D0b", L"a\u4E2Db"},
        {"unknown code page stays as it is", latin, "\\M+9D6D0", L"\\M+9D6D0"},
        {"too few digits stay as they are", latin, "\\U+12", L"\\U+12"},
        {"no digits", latin, "\\U+00G1", L"\\U+00G1"},
        {"other backslashes", latin, "a\\Pb\\", L"a\\Pb\\"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(toUtf8(c.decoder.decode(c.bytes)), toUtf8(c.text));
    }
}

TEST(TextDecoder, TakesTheEncodingFromTheHeader) {
    struct Case {
        const char* name;
        const char* version;
        const char* page;
        unsigned expectedPage;
        bool expectedUtf8;
        bool expectedKnown;
    };
    const Case cases[] = {
        {"before 2007 the code page", "AC1018", "ANSI_936", 936, false, true},
        {"DOS page", "AC1009", "dos850", 850, false, true},
        {"from 2007 on UTF-8", "AC1021", "ANSI_1252", 1252, true, true},
        {"claims to be ASCII", "AC1015", "ASCII", 1252, true, true},
        {"no page: the session's", "AC1009", "", 936, true, true},
        {"unknown page: the session's", "AC1015", "KLINGON", 936, true, false},
        {"no version", "", "ANSI_1251", 1251, false, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        bool known = false;
        const TextDecoder decoder = TextDecoder::forFile(c.version, c.page, 936, known);
        EXPECT_EQ(decoder.codePage(), c.expectedPage);
        EXPECT_EQ(decoder.preferUtf8(), c.expectedUtf8);
        EXPECT_EQ(known, c.expectedKnown);
    }
}

} // namespace
} // namespace headless
