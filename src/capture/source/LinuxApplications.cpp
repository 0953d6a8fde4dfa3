#include "capture/source/LinuxApplications.h"

#include <QString>

#include <algorithm>
#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Desktop-file ids in lower case.
constexpr std::array desktopBrowsers{
    "app.zen_browser.zen"_L1,
    "brave"_L1,
    "brave-browser"_L1,
    "chromium"_L1,
    "chromium-browser"_L1,
    "com.brave.browser"_L1,
    "com.google.chrome"_L1,
    "com.microsoft.edge"_L1,
    "com.opera.opera"_L1,
    "com.vivaldi.vivaldi"_L1,
    "dillo"_L1,
    "epiphany"_L1,
    "falkon"_L1,
    "firefox"_L1,
    "firefox-esr"_L1,
    "floorp"_L1,
    "google-chrome"_L1,
    "google-chrome-beta"_L1,
    "google-chrome-unstable"_L1,
    "icecat"_L1,
    "io.github.ungoogled_software.ungoogled_chromium"_L1,
    "io.gitlab.librewolf-community"_L1,
    "konqueror"_L1,
    "librewolf"_L1,
    "luakit"_L1,
    "microsoft-edge"_L1,
    "microsoft-edge-beta"_L1,
    "microsoft-edge-dev"_L1,
    "midori"_L1,
    "net.waterfox.waterfox"_L1,
    "netsurf-gtk"_L1,
    "one.ablaze.floorp"_L1,
    "opera"_L1,
    "opera-beta"_L1,
    "opera-developer"_L1,
    "org.chromium.chromium"_L1,
    "org.gnome.epiphany"_L1,
    "org.kde.falkon"_L1,
    "org.kde.konqueror"_L1,
    "org.midori_browser.midori"_L1,
    "org.mozilla.firefox"_L1,
    "org.qutebrowser.qutebrowser"_L1,
    "org.torproject.torbrowser-launcher"_L1,
    "palemoon"_L1,
    "seamonkey"_L1,
    "vivaldi-snapshot"_L1,
    "vivaldi-stable"_L1,
    "waterfox"_L1,
    "zen"_L1,
};

constexpr std::array fileManagers{
    "caja"_L1,      "caja-browser"_L1,        "dde-file-manager"_L1, "dolphin"_L1,
    "doublecmd"_L1, "io.elementary.files"_L1, "krusader"_L1,         "nautilus"_L1,
    "nemo"_L1,      "org.gnome.nautilus"_L1,  "org.kde.dolphin"_L1,  "org.kde.krusader"_L1,
    "pcmanfm"_L1,   "pcmanfm-qt"_L1,          "spacefm"_L1,          "thunar"_L1,
};

constexpr std::array wordProcessors{
    "abiword"_L1,
    "calligrawords"_L1,
    "com.abisource.abiword"_L1,
    "libreoffice-writer"_L1,
    "onlyoffice-desktopeditors"_L1,
    "org.kde.calligrawords"_L1,
    "org.libreoffice.libreoffice.writer"_L1,
    "org.onlyoffice.desktopeditors"_L1,
    "wps"_L1,
    "wps-office-wps"_L1,
    "writer"_L1, // as a Snap, "libreoffice_writer"
};

constexpr std::array columnEditors{
    "kate"_L1,         "kwrite"_L1,         "org.kde.kate"_L1, "org.kde.kdevelop"_L1,
    "org.kde.kile"_L1, "org.kde.kwrite"_L1,
};

std::span<const QLatin1StringView> idsOf(ApplicationKind kind) {
    switch (kind) {
    case ApplicationKind::Browser:
        return desktopBrowsers;
    case ApplicationKind::FileManager:
        return fileManagers;
    case ApplicationKind::WordProcessor:
        return wordProcessors;
    case ApplicationKind::ColumnEditor:
        return columnEditors;
    }
    return {};
}

} // namespace

bool isNamed(QStringView identifier, QLatin1StringView id) {
    constexpr QLatin1StringView ending(".desktop");
    if (identifier.endsWith(ending, Qt::CaseInsensitive)) identifier.chop(ending.size());
    if (!identifier.endsWith(id, Qt::CaseInsensitive)) return false;
    const qsizetype before = identifier.size() - id.size();
    return before == 0 || identifier[before - 1] == u'_';
}

bool isLinuxApplication(ApplicationKind kind, QStringView identifier) {
    return std::ranges::any_of(idsOf(kind),
                               [&](QLatin1StringView id) { return isNamed(identifier, id); });
}

} // namespace vorq
