#pragma once

#include <QLatin1StringView>
#include <QStringView>

namespace vorq {

/// What captures do differently for some applications of Linux.
enum class ApplicationKind {
    Browser,
    FileManager,
    WordProcessor,
    /// An editor that can select columns of several lines.
    ColumnEditor,
};

/// Whether an application's identifier is the desktop-file id, which is in lower case: of any case,
/// with or without ".desktop", also as a Snap names it ("snap_application").
[[nodiscard]] bool isNamed(QStringView identifier, QLatin1StringView id);

/// Whether the application is known to be of the kind, by its desktop-file id or by its id in a
/// Flatpak or Snap. An empty identifier is of no kind.
[[nodiscard]] bool isLinuxApplication(ApplicationKind kind, QStringView identifier);

} // namespace vorq
