#pragma once

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

/// Whether the application is known to be of the kind, by its desktop-file id of any case, with or
/// without ".desktop", or by its id in a Flatpak or Snap. An empty identifier is of no kind.
[[nodiscard]] bool isLinuxApplication(ApplicationKind kind, QStringView identifier);

} // namespace vorq
