#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace vorq {

/// The prompts of a writing session. The selection is in none of them: it travels beside. The
/// session block is that of the session log; "" adds no line.

/// For a direction of the writer's, which applies to the version on show, if there is one.
[[nodiscard]] QString promptForUserInstruction(const QString& ask, const QString& current,
                                               const QString& session);

/// For another version than those that were shown and rejected.
[[nodiscard]] QString promptForAnotherTake(const std::optional<QString>& lastInstruction,
                                           const QStringList& avoiding, const QString& session);

} // namespace vorq
