#pragma once

#include "platform/DesktopLook.h"

#include <QString>
#include <QStringList>

namespace vorq {

/// The colour behind selected text in a theme of GTK. Nothing for a theme that is not installed or
/// does not name it. Reads files; any thread.
[[nodiscard]] std::optional<LookColor> gtkThemeSelection(const QString& theme,
                                                         const QStringList& themeFolders);

/// Where themes are installed: the user's folders first.
[[nodiscard]] QStringList gtkThemeFolders();

} // namespace vorq
