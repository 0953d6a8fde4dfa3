#include "capture/source/LinuxApplications.h"
#include "capture/source/SourceApplication.h"

#include <gmock/gmock.h>

#include <array>
#include <vector>

namespace vorq {
namespace {

constexpr std::array kinds{ApplicationKind::Browser, ApplicationKind::FileManager,
                           ApplicationKind::WordProcessor, ApplicationKind::ColumnEditor};

void expectOnly(ApplicationKind expected, const std::vector<QStringView>& ids) {
    for (const QStringView id : ids)
        for (const ApplicationKind kind : kinds)
            EXPECT_EQ(isLinuxApplication(kind, id), kind == expected) << id.toUtf8().constData();
}

TEST(LinuxApplications, KnowsBrowsers) {
    expectOnly(ApplicationKind::Browser, {u"firefox",
                                          u"firefox-esr",
                                          u"chromium",
                                          u"google-chrome",
                                          u"brave-browser",
                                          u"microsoft-edge",
                                          u"opera",
                                          u"vivaldi-stable",
                                          u"org.gnome.Epiphany",
                                          u"org.kde.falkon",
                                          u"org.kde.konqueror",
                                          u"librewolf",
                                          u"org.mozilla.firefox",
                                          u"org.chromium.Chromium",
                                          u"com.google.Chrome",
                                          u"com.brave.Browser",
                                          u"com.microsoft.Edge",
                                          u"com.opera.Opera",
                                          u"com.vivaldi.Vivaldi",
                                          u"io.gitlab.librewolf-community",
                                          u"firefox_firefox",
                                          u"chromium_chromium",
                                          u"opera_opera",
                                          u"Chromium",
                                          u"firefox.desktop"});
}

TEST(LinuxApplications, KnowsFileManagers) {
    expectOnly(ApplicationKind::FileManager,
               {u"org.gnome.Nautilus", u"thunar", u"Thunar", u"pcmanfm", u"pcmanfm-qt",
                u"org.kde.dolphin", u"nemo", u"caja", u"caja-browser", u"io.elementary.files"});
}

TEST(LinuxApplications, KnowsWordProcessors) {
    expectOnly(ApplicationKind::WordProcessor,
               {u"libreoffice-writer", u"abiword", u"wps-office-wps", u"org.kde.calligrawords",
                u"libreoffice_writer", u"org.onlyoffice.desktopeditors"});
}

TEST(LinuxApplications, KnowsEditorsThatSelectColumns) {
    expectOnly(ApplicationKind::ColumnEditor,
               {u"org.kde.kate", u"org.kde.kwrite", u"org.kde.kdevelop", u"kwrite"});
}

TEST(LinuxApplications, TakesNothingElseForOne) {
    for (const QStringView id :
         {u"", u".desktop", u"org.gnome.TextEditor", u"libreoffice-calc", u"nemophila", u"my.opera",
          u"com.example.thunar", u"operator", u"kwrite2", u"xterm"})
        for (const ApplicationKind kind : kinds)
            EXPECT_FALSE(isLinuxApplication(kind, id)) << id.toUtf8().constData();
}

TEST(LinuxApplications, AreTreatedAsTheirKind) {
    for (const QStringView id : {u"org.gnome.Epiphany", u"microsoft-edge", u"libreoffice-writer"})
        EXPECT_TRUE(isHotKeyCopyFallbackBundleID(id)) << id.toUtf8().constData();
    EXPECT_FALSE(isHotKeyCopyFallbackBundleID(u"org.gnome.Nautilus"));
    EXPECT_FALSE(isHotKeyCopyFallbackBundleID(u"caja-browser")) << "it would copy files";
    EXPECT_TRUE(isFinderBundleID(u"org.gnome.Nautilus"));
    EXPECT_FALSE(isFinderBundleID(u"libreoffice-writer"));
    EXPECT_TRUE(showsWebPages(u"librewolf"));
    EXPECT_FALSE(showsWebPages(u"caja-browser"));
}

} // namespace
} // namespace vorq
