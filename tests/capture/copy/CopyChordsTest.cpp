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

TEST(CopyChords, IsControlCForMostApplications) {
    EXPECT_EQ(copyChordOf(u"chromium"), plainCopy);
    EXPECT_EQ(copyChordOf(u"firefox-esr"), plainCopy);
    EXPECT_EQ(copyChordOf(u"org.xfce.mousepad"), plainCopy);
}

TEST(CopyChords, IsTheOwnOneOfATerminal) {
    for (const QString& terminal : QStringList{"org.kde.konsole", "qterminal", "snap_alacritty",
                                               "org.gnome.Terminal", "Alacritty", "kitty.desktop"})
        EXPECT_EQ(copyChordOf(terminal), terminalCopy) << terminal.toStdString();
}

TEST(CopyChords, IsNoneWhereNoneIsSafe) {
    for (const QString& unsafe : QStringList{"XTerm", "URxvt", "some-new-terminal", "gvim", ""})
        EXPECT_EQ(copyChordOf(unsafe), std::nullopt) << unsafe.toStdString();
}

TEST(CopyChords, IsAnotherWhereATerminalMayBeInTheWindow) {
    for (const QString& editor : QStringList{"code", "org.kde.kate", "jetbrains-idea", "emacs"})
        EXPECT_EQ(copyChordOf(editor), insertCopy) << editor.toStdString();
}

TEST(CopyChords, PastesIntoNoTerminal) {
    EXPECT_EQ(pasteChordOf(u"chromium"), KeyChord{.key = KeyChord::Key::V});
    EXPECT_EQ(pasteChordOf(u"org.kde.kate"), KeyChord{.key = KeyChord::Key::V});
    for (const QString& other : QStringList{"org.kde.konsole", "XTerm", "emacs", ""})
        EXPECT_EQ(pasteChordOf(other), std::nullopt) << other.toStdString();
}

} // namespace
} // namespace vorq
