#include "component/record_key.h"

namespace {

struct Escape {
    const wchar_t* character;
    const wchar_t* word;
};

// No word holds a character that another row escapes, and none is part of another.
constexpr Escape kEscapes[] = {
    {L"<", L"orn(左箭头)orn"},  {L">", L"orn(右箭头)orn"}, {L"/", L"orn(斜杠)orn"},
    {L"\\", L"orn(反斜杠)orn"}, {L"\"", L"orn(引号)orn"},  {L":", L"orn(冒号)orn"},
    {L";", L"orn(分号)orn"},    {L"?", L"orn(问号)orn"},   {L"|", L"orn(竖杠)orn"},
    {L",", L"orn(逗号)orn"},    {L"=", L"orn(等于号)orn"}, {L"`", L"orn(反引号)orn"},
};

} // namespace

void Common::FixRecordKey(CString& key) {
    for (const Escape& escape : kEscapes)
        key.Replace(escape.character, escape.word);
}

CString Common::FixRecordKey(const CString& key) {
    CString fixed = key;
    FixRecordKey(fixed);
    return fixed;
}

void Common::RecoverRecordKey(CString& key) {
    for (const Escape& escape : kEscapes)
        key.Replace(escape.word, escape.character);
}
