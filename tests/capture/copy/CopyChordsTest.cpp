#include "capture/copy/CopyChords.h"

#include <QStringList>

#include <gmock/gmock.h>

#include <ostream>

namespace vorq {

static void PrintTo(KeyChord chord, std::ostream* out) {
    *out << "Ctrl+" << (chord.hasShift ? "Shift+" : "") << static_cast<int>(chord.key);
}

namespace {

constexpr KeyChord plainCopy{.key = KeyChord::Key::C};
constexpr KeyChord terminalCopy{.key = KeyChord::Key::C, .hasShift = true};
constexpr KeyChord insertCopy{.key = KeyChord::Key::Insert};

TEST(CopyChords, IsControlCWhereThatIsKnownToCopy) {
    for (const QString& known : QStringList{"chromium", "firefox-esr", "libreoffice-writer",
                                            "org.libreoffice.LibreOffice.calc", "org.gnome.Evince"})
        EXPECT_EQ(copyChordOf(known), plainCopy) << known.toStdString();
}

TEST(CopyChords, IsTheOwnOneOfATerminal) {
    for (const QString& terminal :
         QStringList{"org.kde.konsole", "qterminal", "snap_alacritty", "org.gnome.Terminal",
                     "Alacritty", "kitty.desktop", "dev.warp.Warp", "tabby", "Hyper", "rio"})
        EXPECT_EQ(copyChordOf(terminal), terminalCopy) << terminal.toStdString();
}

TEST(CopyChords, IsNoneWhereNoneIsSafe) {
    for (const QString& unsafe : QStringList{"XTerm", "URxvt", "some-new-terminal", "gvim", ""})
        EXPECT_EQ(copyChordOf(unsafe), std::nullopt) << unsafe.toStdString();
}

TEST(CopyChords, IsNoneWhereKeysGoToAnotherMachine) {
    for (const QString& viewer :
         QStringList{"org.remmina.Remmina", "virt-manager", "remote-viewer", "VirtualBox Machine",
                     "org.gnome.Boxes", "vncviewer", "xfreerdp", "Vmware"})
        EXPECT_EQ(copyChordOf(viewer), std::nullopt) << viewer.toStdString();
}

TEST(CopyChords, IsNoneWhereFilesOrPasswordsWouldBeCopied) {
    for (const QString& other : QStringList{"org.kde.dolphin", "nemo", "org.keepassxc.KeePassXC",
                                            "com.bitwarden.desktop", "1password"})
        EXPECT_EQ(copyChordOf(other), std::nullopt) << other.toStdString();
}

// It may be a terminal, or have one in its window.
TEST(CopyChords, IsNeverControlCForWhatIsNotKnown) {
    for (const QString& unknown : QStringList{
             "dev.zed.Zed", "code", "code-insiders", "windsurf", "android-studio", "jetbrains-idea",
             "org.kde.kate", "emacs", "org.xfce.mousepad", "com.example.written-tomorrow"})
        EXPECT_EQ(copyChordOf(unknown), insertCopy) << unknown.toStdString();
}

TEST(CopyChords, PastesIntoNoTerminal) {
    EXPECT_EQ(pasteChordOf(u"chromium"), KeyChord{.key = KeyChord::Key::V});
    EXPECT_EQ(pasteChordOf(u"org.kde.kate"), KeyChord{.key = KeyChord::Key::V});
    for (const QString& other :
         QStringList{"org.kde.konsole", "XTerm", "emacs", "virt-manager", "org.kde.dolphin", ""})
        EXPECT_EQ(pasteChordOf(other), std::nullopt) << other.toStdString();
}

} // namespace
} // namespace vorq
