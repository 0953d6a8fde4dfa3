#include "capture/source/LinuxApplications.h"

#include <QString>

#include <algorithm>
#include <array>
#include <span>

namespace vorq {
namespace {

// Desktop-file ids in lower case.
constexpr std::array desktopBrowsers{
    QLatin1StringView("app.zen_browser.zen"),
    QLatin1StringView("brave"),
    QLatin1StringView("brave-browser"),
    QLatin1StringView("chromium"),
    QLatin1StringView("chromium-browser"),
    QLatin1StringView("com.brave.browser"),
    QLatin1StringView("com.google.chrome"),
    QLatin1StringView("com.microsoft.edge"),
    QLatin1StringView("com.opera.opera"),
    QLatin1StringView("com.vivaldi.vivaldi"),
    QLatin1StringView("dillo"),
    QLatin1StringView("epiphany"),
    QLatin1StringView("falkon"),
    QLatin1StringView("firefox"),
    QLatin1StringView("firefox-esr"),
    QLatin1StringView("floorp"),
    QLatin1StringView("google-chrome"),
    QLatin1StringView("google-chrome-beta"),
    QLatin1StringView("google-chrome-unstable"),
    QLatin1StringView("icecat"),
    QLatin1StringView("io.github.ungoogled_software.ungoogled_chromium"),
    QLatin1StringView("io.gitlab.librewolf-community"),
    QLatin1StringView("konqueror"),
    QLatin1StringView("librewolf"),
    QLatin1StringView("luakit"),
    QLatin1StringView("microsoft-edge"),
    QLatin1StringView("microsoft-edge-beta"),
    QLatin1StringView("microsoft-edge-dev"),
    QLatin1StringView("midori"),
    QLatin1StringView("net.waterfox.waterfox"),
    QLatin1StringView("netsurf-gtk"),
    QLatin1StringView("one.ablaze.floorp"),
    QLatin1StringView("opera"),
    QLatin1StringView("opera-beta"),
    QLatin1StringView("opera-developer"),
    QLatin1StringView("org.chromium.chromium"),
    QLatin1StringView("org.gnome.epiphany"),
    QLatin1StringView("org.kde.falkon"),
    QLatin1StringView("org.kde.konqueror"),
    QLatin1StringView("org.midori_browser.midori"),
    QLatin1StringView("org.mozilla.firefox"),
    QLatin1StringView("org.qutebrowser.qutebrowser"),
    QLatin1StringView("org.torproject.torbrowser-launcher"),
    QLatin1StringView("palemoon"),
    QLatin1StringView("seamonkey"),
    QLatin1StringView("vivaldi-snapshot"),
    QLatin1StringView("vivaldi-stable"),
    QLatin1StringView("waterfox"),
    QLatin1StringView("zen"),
};

constexpr std::array fileManagers{
    QLatin1StringView("caja"),
    QLatin1StringView("caja-browser"),
    QLatin1StringView("dde-file-manager"),
    QLatin1StringView("dolphin"),
    QLatin1StringView("doublecmd"),
    QLatin1StringView("io.elementary.files"),
    QLatin1StringView("krusader"),
    QLatin1StringView("nautilus"),
    QLatin1StringView("nemo"),
    QLatin1StringView("org.gnome.nautilus"),
    QLatin1StringView("org.kde.dolphin"),
    QLatin1StringView("org.kde.krusader"),
    QLatin1StringView("pcmanfm"),
    QLatin1StringView("pcmanfm-qt"),
    QLatin1StringView("spacefm"),
    QLatin1StringView("thunar"),
};

constexpr std::array wordProcessors{
    QLatin1StringView("abiword"),
    QLatin1StringView("calligrawords"),
    QLatin1StringView("com.abisource.abiword"),
    QLatin1StringView("libreoffice-writer"),
    QLatin1StringView("onlyoffice-desktopeditors"),
    QLatin1StringView("org.kde.calligrawords"),
    QLatin1StringView("org.libreoffice.libreoffice.writer"),
    QLatin1StringView("org.onlyoffice.desktopeditors"),
    QLatin1StringView("wps"),
    QLatin1StringView("wps-office-wps"),
    QLatin1StringView("writer"), // as a Snap, "libreoffice_writer"
};

constexpr std::array columnEditors{
    QLatin1StringView("kate"),         QLatin1StringView("kwrite"),
    QLatin1StringView("org.kde.kate"), QLatin1StringView("org.kde.kdevelop"),
    QLatin1StringView("org.kde.kile"), QLatin1StringView("org.kde.kwrite"),
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
