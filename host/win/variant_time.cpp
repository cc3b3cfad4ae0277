#include "win/variant.h"

#include <chrono>
#include <cmath>

namespace {

constexpr std::chrono::sys_days kDayZero{std::chrono::year(1899) / 12 / 30};
constexpr double kFirstDay = -657434.0; // 100-01-01
constexpr double kEndDay = 2958466.0;   // 10000-01-01
constexpr long long kSecondsOfDay = 86400;

} // namespace

INT VariantTimeToSystemTime(DOUBLE days, SYSTEMTIME* time) {
    if (!(days > kFirstDay - 1.0 && days < kEndDay)) return FALSE;
    double whole = 0.0;
    const double fraction = std::abs(std::modf(days, &whole));
    auto seconds = static_cast<long long>(std::llround(fraction * kSecondsOfDay));
    const std::chrono::sys_days day =
        kDayZero + std::chrono::days(static_cast<int>(whole) + (seconds == kSecondsOfDay ? 1 : 0));
    seconds %= kSecondsOfDay;
    const std::chrono::year_month_day date(day);
    *time = {static_cast<WORD>(static_cast<int>(date.year())),
             static_cast<WORD>(static_cast<unsigned>(date.month())),
             static_cast<WORD>(std::chrono::weekday(day).c_encoding()),
             static_cast<WORD>(static_cast<unsigned>(date.day())),
             static_cast<WORD>(seconds / 3600),
             static_cast<WORD>(seconds / 60 % 60),
             static_cast<WORD>(seconds % 60),
             0};
    return TRUE;
}

INT SystemTimeToVariantTime(const SYSTEMTIME* time, DOUBLE* days) {
    const std::chrono::year_month_day date(std::chrono::year(time->wYear),
                                           std::chrono::month(time->wMonth),
                                           std::chrono::day(time->wDay));
    if (!date.ok() || time->wYear < 100 || time->wYear > 9999 || time->wHour > 23 ||
        time->wMinute > 59 || time->wSecond > 59) {
        return FALSE;
    }
    const auto whole = static_cast<double>((std::chrono::sys_days(date) - kDayZero).count());
    const double fraction =
        (time->wHour * 3600 + time->wMinute * 60 + time->wSecond) / double(kSecondsOfDay);
    *days = whole < 0.0 ? whole - fraction : whole + fraction;
    return TRUE;
}
