// System variables that the session keeps, whatever drawing is open.
#include "ed/variable_table.h"

namespace headless {
namespace {

using Short = Adesk::Int16;
using Text = std::wstring;

constexpr bool kReadOnly = true;
constexpr bool kWritable = false;

VariableSpec toggle(const wchar_t* name, Short initial) { return {name, initial, kWritable, 0, 1}; }

} // namespace

std::span<const VariableSpec> sessionVariables() {
    static const VariableSpec specs[] = {
        {L"ACADVER", Text(L"20.0"), kReadOnly},
        {L"AFLAGS", Short{16}, kWritable, 0, 63},
        {L"APERTURE", Short{10}, kWritable, 1, 50},
        {L"ATTDIA", Short{0}, kWritable, 0, 1},
        toggle(L"ATTREQ", 1),
        toggle(L"BLIPMODE", 0),
        {L"CIRCLERAD", 0.0, kWritable, 0},
        {L"CMDACTIVE", Short{0}, kReadOnly},
        toggle(L"CMDDIA", 1),
        toggle(L"CMDECHO", 1),
        {L"CMDNAMES", Text(), kReadOnly},
        {L"DELOBJ", Short{1}, kWritable, -3, 3},
        {L"DRAGMODE", Short{2}, kWritable, 0, 2},
        {L"EDGEMODE", Short{0}, kWritable, 0, 1},
        {L"ERRNO", Short{0}, kWritable, 0},
        toggle(L"EXPERT", 0),
        toggle(L"FILEDIA", 1),
        toggle(L"GRIDMODE", 0),
        {L"GRIPS", Short{2}, kWritable, 0, 2},
        {L"HPANG", 0.0},
        toggle(L"HPASSOC", 1),
        {L"HPNAME", Text(L"ANSI31")},
        {L"HPSCALE", 1.0, kWritable, 1e-300},
        toggle(L"HIGHLIGHT", 1),
        {L"LASTPOINT", AcGePoint3d()},
        {L"LISPINIT", Short{1}, kWritable, 0, 1},
        {L"LOCALE", Text(L"CHS"), kReadOnly},
        {L"MAXSORT", Short{1000}, kWritable, 0},
        toggle(L"MENUECHO", 0),
        toggle(L"NOMUTT", 0),
        {L"OFFSETDIST", 1.0},
        toggle(L"OFFSETGAPTYPE", 0),
        toggle(L"ORTHOMODE", 0),
        {L"OSMODE", Short{4133}, kWritable, 0},
        {L"PEDITACCEPT", Short{0}, kWritable, 0, 1},
        toggle(L"PICKADD", 1),
        toggle(L"PICKAUTO", 1),
        {L"PICKBOX", Short{3}, kWritable, 0, 50},
        toggle(L"PICKDRAG", 0),
        toggle(L"PICKFIRST", 1),
        {L"PICKSTYLE", Short{1}, kWritable, 0, 3},
        {L"PLATFORM", Text(L"Headless host"), kReadOnly},
        {L"POLARANG", 90.0},
        {L"PRODUCT", Text(L"Headless host"), kReadOnly},
        {L"SAVETIME", Short{10}, kWritable, 0, 600},
        {L"SHORTCUTMENU", Short{11}, kWritable, 0, 31},
        {L"SNAPANG", 0.0},
        {L"SNAPBASE", AcGePoint2d()},
        toggle(L"SNAPMODE", 0),
        {L"SNAPUNIT", AcGePoint2d(10.0, 10.0)},
        {L"TEXTEVAL", Short{0}, kWritable, 0, 1},
        toggle(L"TOOLTIPS", 1),
        toggle(L"TRIMMODE", 1),
        {L"USERI1", Short{0}},
        {L"USERI2", Short{0}},
        {L"USERI3", Short{0}},
        {L"USERI4", Short{0}},
        {L"USERI5", Short{0}},
        {L"USERR1", 0.0},
        {L"USERR2", 0.0},
        {L"USERR3", 0.0},
        {L"USERR4", 0.0},
        {L"USERR5", 0.0},
        {L"USERS1", Text()},
        {L"USERS2", Text()},
        {L"USERS3", Text()},
        {L"USERS4", Text()},
        {L"USERS5", Text()},
        {L"ZOOMFACTOR", Short{60}, kWritable, 3, 100},
    };
    return specs;
}

} // namespace headless
