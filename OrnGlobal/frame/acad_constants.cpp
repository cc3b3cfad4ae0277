#include "frame/acad_constants.h"

const wchar_t* const AcadString::bylayer = L"ByLayer";
const wchar_t* const AcadString::byblock = L"ByBlock";
const wchar_t* const AcadString::continuous = L"Continuous";
const wchar_t* const AcadString::standard = L"Standard";
const wchar_t* const AcadString::none = L"*NONE*";
const wchar_t* const AcadString::varies1 = L"*VARIES*";
const wchar_t* const AcadString::varies2 = L"VARIES";
const wchar_t* const AcadString::zero = L"0";
const wchar_t* const AcadString::wcAll = L"*";
const wchar_t* const AcadString::openBrace = L"{";
const wchar_t* const AcadString::endBrace = L"}";
const wchar_t* const AcadString::nullStr = L"";

const wchar_t* const AcadVar::cmdecho = L"cmdecho";
const wchar_t* const AcadVar::filedia = L"filedia";
const wchar_t* const AcadVar::cvport = L"cvport";
const wchar_t* const AcadVar::snapang = L"snapang";
const wchar_t* const AcadVar::viewdir = L"viewdir";
const wchar_t* const AcadVar::viewsize = L"viewsize";
const wchar_t* const AcadVar::adserr = L"errno";
