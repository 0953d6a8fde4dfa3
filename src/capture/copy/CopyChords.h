#pragma once

#include "platform/copying/KeyPoster.h"

#include <QStringView>

#include <optional>

namespace vorq {

/// The chord by which an application copies its selection; nothing where none is safe, and where
/// what is copied is not for us: files, passwords, what is on another machine.
///
/// To a program in a terminal Ctrl+C means to end, so only those get it that are known to copy on
/// it and to have no terminal in any window. Terminals get a chord of their own, or nothing.
/// Whatever is not known, editors included, gets Ctrl+Insert. An empty identifier gets nothing.
[[nodiscard]] std::optional<KeyChord> copyChordOf(QStringView identifier);

/// The chord by which an application replaces its selection by the clipboard; nothing for
/// terminals, where nothing is replaced and what is pasted may run, nor where nothing is copied.
[[nodiscard]] std::optional<KeyChord> pasteChordOf(QStringView identifier);

} // namespace vorq
