#include "support/Date.h"

#include <algorithm>
#include <cstdint>

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
    QByteArray text = form.toByteArray();
    const auto put = [&text](qsizetype last, int digits, std::int64_t value) {
        for (qsizetype at = last; at > last - digits; --at, value /= 10)
            text[at] = static_cast<char>('0' + value % 10);
    };
    put(3, 4, std::clamp(int{ymd.year()}, 0, 9999));
    put(6, 2, unsigned{ymd.month()});
    put(9, 2, unsigned{ymd.day()});
    put(12, 2, time.hours().count());
    put(15, 2, time.minutes().count());
    put(18, 2, time.seconds().count());
    return text;
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

Date dateOf(const QDateTime& moment) {
    return Date(std::chrono::milliseconds(moment.toMSecsSinceEpoch()));
}

QDateTime dateTimeOf(Date date) {
    return QDateTime::fromMSecsSinceEpoch(date.time_since_epoch().count(), Qt::UTC);
}

} // namespace vorq
