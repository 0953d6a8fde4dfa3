#include "platform/linux/desktop/DesktopEntries.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class DesktopEntriesTest : public testing::Test {
  protected:
    void write(const QString& path, const QByteArray& lines) {
        const QString whole = m_folder.filePath(path);
        ASSERT_TRUE(QDir().mkpath(whole.section('/', 0, -2)));
        QFile file(whole);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\n" + lines);
    }

    [[nodiscard]] DesktopEntries entries() const {
        return DesktopEntries({m_folder.filePath("mine"), m_folder.filePath("all")});
    }

    QTemporaryDir m_folder;
};

TEST_F(DesktopEntriesTest, TheWindowClassOfAFileIsMatchedInAnyCase) {
    write("all/debian-xterm.desktop",
          "Name=XTerm\nStartupWMClass=XTerm\nExec=/usr/bin/xterm -ls\n");
    const DesktopEntry expected{"debian-xterm", "XTerm", "XTerm", "xterm"};
    EXPECT_EQ(entries().ofWindowClass("xterm"), expected);
}

TEST_F(DesktopEntriesTest, AFileThatNamesNoWindowClassIsMatchedByItsName) {
    write("all/org.kde.kate.desktop", "Name=Kate\n");
    write("all/mousepad.desktop", "Name=Mousepad\n");
    EXPECT_EQ(entries().ofWindowClass("Mousepad")->id, "mousepad");
    EXPECT_EQ(entries().ofWindowClass("kate")->id, "org.kde.kate");
    EXPECT_FALSE(entries().ofWindowClass("kde"));
}

TEST_F(DesktopEntriesTest, TheUsersOwnFileWins) {
    write("mine/editor.desktop", "Name=Mine\n");
    write("all/editor.desktop", "Name=Theirs\n");
    EXPECT_EQ(entries().withId("editor")->name, "Mine");
}

TEST_F(DesktopEntriesTest, AnEntryIsFoundByWhatItStarts) {
    write("all/tool.desktop", "Name=Tool\nExec=env LANG=C \"/opt/tool/bin/tool-gui\" %F\n");
    EXPECT_EQ(entries().ofExecutable("tool-gui")->id, "tool");
}

TEST_F(DesktopEntriesTest, AFolderIsPartOfTheId) {
    write("all/kde/viewer.desktop", "Name=Viewer\n");
    EXPECT_TRUE(entries().withId("kde-viewer"));
}

TEST_F(DesktopEntriesTest, AProgramInstalledLaterIsFound) {
    write("all/one.desktop", "Name=One\n");
    DesktopEntries all = entries();
    EXPECT_FALSE(all.withId("two"));
    write("mine/two.desktop", "Name=Two\n");
    EXPECT_TRUE(all.withId("two"));
}

TEST(DesktopEntryText, TheNameIsInTheUsersLanguage) {
    const QString text = "[Desktop Entry]\nType=Application\nName=Text Editor\n"
                         "Name[de]=Texteditor\n\n[Desktop Action new]\nName=New\nExec=other\n";
    EXPECT_EQ(readDesktopEntry("e", text, "de_CH")->name, "Texteditor");
    EXPECT_EQ(readDesktopEntry("e", text, "fr_FR")->name, "Text Editor");
    EXPECT_EQ(readDesktopEntry("e", text, "fr_FR")->executable, "");
}

TEST(DesktopEntryText, WhatIsNoApplicationIsNoEntry) {
    EXPECT_FALSE(readDesktopEntry("e", "[Desktop Entry]\nType=Link\nName=A\n", "C"));
    EXPECT_FALSE(readDesktopEntry("e", "[Desktop Entry]\nType=Application\nHidden=true\n", "C"));
    EXPECT_FALSE(readDesktopEntry("e", "", "C"));
}

} // namespace
} // namespace vorq
