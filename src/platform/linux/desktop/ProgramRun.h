#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>
#include <stop_token>

namespace vorq {

/// Runs a program without input and gives what it wrote to its standard output. Nothing if it could
/// not be started, failed, took longer than the limit or was stopped; it is killed then. Blocks for
/// as long as that, so on the main thread only for a user who waits for nothing else; needs no
/// event loop.
[[nodiscard]] std::optional<QByteArray> outputOf(const QString& program,
                                                 const QStringList& arguments,
                                                 std::chrono::milliseconds limit,
                                                 const std::stop_token& stop = {});

} // namespace vorq
