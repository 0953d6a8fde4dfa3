#pragma once

#include "platform/copying/KeyPoster.h"

#include <QStringView>

#include <optional>

namespace vorq {

/// The chord by which an application copies its selection; nothing where none does so for sure and
/// does nothing else. To a program in a terminal Ctrl+C means to end, so terminals get a chord of
/// their own, as do programs that have a terminal in their windows. One that is not known is not
/// pressed keys in: it may be a terminal.
[[nodiscard]] std::optional<KeyChord> copyChordOf(QStringView identifier);

/// The chord by which an application replaces its selection by the clipboard; nothing for
/// terminals, where nothing is replaced and what is pasted may run.
[[nodiscard]] std::optional<KeyChord> pasteChordOf(QStringView identifier);

} // namespace vorq
