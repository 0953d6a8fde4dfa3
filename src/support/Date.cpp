#include "support/Date.h"

#include <cstdio>

namespace vorq {
namespace {

using namespace std::chrono;

constexpr QByteArrayView form = "0000-00-00T00:00:00Z";

bool hasForm(QByteArrayView text) {
    if (text.size() != form.size()) return false;
    for (qsizetype at = 0; at < form.size(); ++at) {
        const bool fits =
            form[at] == '0' ? text[at] >= '0' && text[at] <= '9' : text[at] == form[at];
        if (!fits) return false;
    }
    return true;
}

} // namespace

QByteArray isoDate(Date date) {
    const auto second = floor<seconds>(date);
    const auto day = floor<days>(second);
    const year_month_day ymd(day);
    const hh_mm_ss time(second - day);
    char text[48];
    const int size = std::snprintf(
        text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02dZ", int{ymd.year()}, unsigned{ymd.month()},
        unsigned{ymd.day()}, static_cast<int>(time.hours().count()),
        static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
    return {text, size};
}

std::optional<Date> dateFromIso(QByteArrayView text) {
    if (!hasForm(text)) return std::nullopt;
    const auto number = [text](qsizetype from, qsizetype size) {
        int value = 0;
        for (qsizetype at = from; at < from + size; ++at)
            value = value * 10 + (text[at] - '0');
        return value;
    };
    const year_month_day day(year(number(0, 4)), month(static_cast<unsigned>(number(5, 2))),
                             std::chrono::day(static_cast<unsigned>(number(8, 2))));
    const int hour = number(11, 2);
    const int minute = number(14, 2);
    const int second = number(17, 2);
    if (!day.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return sys_days(day) + hours(hour) + minutes(minute) + seconds(second);
}

} // namespace vorq
