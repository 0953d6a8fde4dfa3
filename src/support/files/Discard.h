#pragma once

#include <QString>

#include <expected>

namespace vorq {

/// Takes a file, or a folder with all that it holds, from its place: to the trash, where the user
/// can find it again, or for good where the trash does not take it. Of a symbolic link only the
/// link goes. What is not there counts as gone. The error says why it stays.
[[nodiscard]] std::expected<void, QString> discard(const QString& path);

/// The same, always for good.
[[nodiscard]] std::expected<void, QString> removeForGood(const QString& path);

} // namespace vorq
