#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>

#include <chrono>
#include <optional>

namespace vorq {

/// A moment, in UTC.
using Date = std::chrono::sys_time<std::chrono::milliseconds>;

/// The moment as "2026-03-01T10:20:30Z"; what is below a second is cut off. Years from 0 to 9999.
[[nodiscard]] QByteArray isoDate(Date date);

/// Reads exactly that form. Nothing for any other and for what no calendar has.
[[nodiscard]] std::optional<Date> dateFromIso(QByteArrayView text);

[[nodiscard]] Date dateOf(const QDateTime& moment);

/// In UTC.
[[nodiscard]] QDateTime dateTimeOf(Date date);

} // namespace vorq
