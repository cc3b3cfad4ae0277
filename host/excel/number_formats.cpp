#include "excel/number_formats.h"

namespace headless::excel {

std::string_view builtInNumberFormat(int id) {
    switch (id) {
    case 1:
        return "0";
    case 2:
        return "0.00";
    case 3:
        return "#,##0";
    case 4:
        return "#,##0.00";
    case 9:
        return "0%";
    case 10:
        return "0.00%";
    case 11:
        return "0.00E+00";
    case 12:
        return "# ?/?";
    case 13:
        return "# ?\?/??";
    case 14:
        return "yyyy/m/d";
    case 15:
        return "d-mmm-yy";
    case 16:
        return "d-mmm";
    case 17:
        return "mmm-yy";
    case 18:
        return "h:mm AM/PM";
    case 19:
        return "h:mm:ss AM/PM";
    case 20:
        return "h:mm";
    case 21:
        return "h:mm:ss";
    case 22:
        return "yyyy/m/d h:mm";
    case 37:
        return "#,##0 ;(#,##0)";
    case 38:
        return "#,##0 ;[Red](#,##0)";
    case 39:
        return "#,##0.00;(#,##0.00)";
    case 40:
        return "#,##0.00;[Red](#,##0.00)";
    case 45:
        return "mm:ss";
    case 46:
        return "[h]:mm:ss";
    case 47:
        return "mmss.0";
    case 48:
        return "##0.0E+0";
    case 49:
        return "@";
    default:
        return "General";
    }
}

namespace {

/// Calls `visit` with each letter of a date or time that the format's first section has, in lower
/// case; a bracket stands for a time that counts on. Stops when it answers true.
template <class Visit>
bool anyDateLetter(std::string_view format, Visit visit) {
    for (std::size_t i = 0; i < format.size(); ++i) {
        switch (format[i]) {
        case '"': // Words.
            i = format.find('"', i + 1);
            if (i == std::string_view::npos) return false;
            break;
        case '[': { // Colours, conditions, locales; and hours and minutes that count on.
            const char next = i + 1 < format.size() ? format[i + 1] : ']';
            if ((next == 'h' || next == 'm' || next == 's') && visit('[')) return true;
            i = format.find(']', i);
            if (i == std::string_view::npos) return false;
            break;
        }
        case '\\':
        case '_':
        case '*':
            ++i;
            break;
        case ';': // Only the first of the sections counts.
            return false;
        case 'y':
        case 'Y':
        case 'd':
        case 'D':
        case 'm':
        case 'M':
        case 'h':
        case 'H':
        case 's':
        case 'S':
            if (visit(static_cast<char>(format[i] | 0x20))) return true;
            break;
        case 'G': // "General" has none of them but needs passing over.
            if (format.substr(i, 7) == "General") i += 6;
            break;
        default:
            break;
        }
    }
    return false;
}

} // namespace

bool showsDates(std::string_view format) {
    return anyDateLetter(format, [](char) { return true; });
}

bool showsDays(std::string_view format) {
    return anyDateLetter(format, [](char letter) { return letter == 'y' || letter == 'd'; });
}

} // namespace headless::excel
