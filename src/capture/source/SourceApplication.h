#pragma once

#include <QStringView>

namespace vorq {

/// What a capture does differently for some applications. An application is known by its
/// identifier, of any case; an empty one stands for an application without one, for which
/// everything here is false. LinuxApplications holds the identifiers of Linux.

/// By the identifiers of macOS, and by words that the identifiers of browsers have anywhere.
[[nodiscard]] bool isBrowserBundleID(QStringView bundleID);

/// The same, and by the identifiers of Linux.
[[nodiscard]] bool isAnyBrowser(QStringView bundleID);

/// Whether what it shows are mostly web pages: browsers, and programs known to be made of pages.
[[nodiscard]] bool showsWebPages(QStringView bundleID);

/// Whether the application takes the note hot key for its own "Save As".
[[nodiscard]] bool ownsNativeSaveAs(QStringView bundleID);

/// Whether it is a file manager, whose selection is files and must not be copied.
[[nodiscard]] bool isFinderBundleID(QStringView bundleID);

/// Whether the panel hot key may send the copy shortcut when accessibility finds no text.
[[nodiscard]] bool isHotKeyCopyFallbackBundleID(QStringView bundleID);

} // namespace vorq
