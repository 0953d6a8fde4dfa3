#include "platform/portable/MarkdownFolderBridge.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

struct MarkdownFolderBridgeTest : testing::Test {
    QTemporaryDir temporary;
    QString folder = temporary.filePath("home/Notes");
    MarkdownFolderBridge notes{folder};

    [[nodiscard]] QByteArray content(const QString& name) const {
        QFile file(folder + '/' + name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }

    void put(const QString& name, const QByteArray& bytes, int age = 0) const {
        QDir().mkpath(folder);
        QFile file(folder + '/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.flush();
        const QDateTime time = QDateTime::fromSecsSinceEpoch(1'800'000'000 - age);
        ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
    }

    [[nodiscard]] QStringList files() const {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

} // namespace

TEST_F(MarkdownFolderBridgeTest, WritesAFileForANote) {
    EXPECT_EQ(notes.createNote("Plan", "first\nsecond\n"), u"Plan.md");
    EXPECT_EQ(content("Plan.md"), "# Plan\n\nfirst\nsecond\n");
    EXPECT_EQ(notes.noteBody("Plan.md"), u"# Plan\n\nfirst\nsecond\n");
    EXPECT_EQ(QFileInfo(folder + "/Plan.md").permissions() & QFileDevice::Permissions(0x077),
              QFileDevice::Permissions());
    EXPECT_EQ(files(), QStringList("Plan.md"));
}

TEST_F(MarkdownFolderBridgeTest, DoesNotRepeatATitleThatTheTextBeginsWith) {
    ASSERT_TRUE(notes.createNote("Plan", "Plan\nmore"));
    EXPECT_EQ(content("Plan.md"), "# Plan\nmore\n");
}

TEST_F(MarkdownFolderBridgeTest, TakesATitleThatIsAHeadingOfMarkdownForItsText) {
    EXPECT_EQ(notes.createNote("## Why", "## Why\n\nBecause."), u"Why.md");
    EXPECT_EQ(content("Why.md"), "# Why\n\nBecause.\n");
    EXPECT_EQ(notes.createNote("# How", "Like this."), u"How.md");
    EXPECT_EQ(content("How.md"), "# How\n\nLike this.\n");
    EXPECT_EQ(notes.createNote("#5 of 9", "#5 of 9\nx"), u"#5 of 9.md");
    EXPECT_EQ(content("#5 of 9.md"), "# #5 of 9\nx\n");
    EXPECT_EQ(notes.createNote("####### Seven", ""), u"####### Seven.md");
    EXPECT_EQ(notes.createNote("## ", ""), u"##.md");
}

TEST_F(MarkdownFolderBridgeTest, NumbersNamesThatAreTakenWhateverTheirCase) {
    EXPECT_EQ(notes.createNote("Plan", "a"), u"Plan.md");
    EXPECT_EQ(notes.createNote("Plan", "b"), u"Plan (2).md");
    EXPECT_EQ(notes.createNote("pLAN", "c"), u"pLAN (3).md");
    EXPECT_EQ(notes.createNote("e\u0301", "f"), u"\u00E9.md");
    EXPECT_EQ(notes.createNote("\u00C9", "g"), u"\u00C9 (2).md");
    EXPECT_EQ(content("Plan (2).md"), "# Plan\n\nb\n");
}

TEST_F(MarkdownFolderBridgeTest, StaysInItsFolder) {
    for (const QString& title :
         {u"../escape"_s, u"/etc/passwd"_s, u".."_s, u"."_s, u".hidden"_s, u"a/../../b"_s}) {
        const auto note = notes.createNote(title, "x");
        ASSERT_TRUE(note) << title.toStdString();
        EXPECT_FALSE(note->startsWith('.') || note->contains('/')) << note->toStdString();
        EXPECT_EQ(content(*note), "# " + title.toUtf8() + "\n\nx\n");
    }
    EXPECT_EQ(files().size(), 6);
    EXPECT_EQ(QDir(temporary.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

TEST(MarkdownFolderBridge, MakesNamesThatEveryFileSystemTakes) {
    const auto name = [](QStringView title) { return MarkdownFolderBridge::fileNameFor(title); };
    EXPECT_EQ(name(u""), u"Untitled");
    EXPECT_EQ(name(u" . / \\ .. "), u"Untitled");
    EXPECT_EQ(name(u"a/b\\c:d*e?f\"g<h>i|j"), u"a b c d e f g h i j");
    EXPECT_EQ(name(u"a\nb\tc\u2028d"), u"a b c d");
    EXPECT_EQ(name(u"Trailing. . "), u"Trailing");
    EXPECT_EQ(name(u"😀 👩‍👩‍👧"), u"😀 👩‍👩‍👧");
    EXPECT_EQ(name(u"con"), u"con_");
    EXPECT_EQ(name(u"LPT1"), u"LPT1_");
    EXPECT_EQ(name(u"nul.txt"), u"nul_.txt") << "what counts there is what stands before a point";
    EXPECT_EQ(name(u"aux .a.b"), u"aux _.a.b");
    EXPECT_EQ(name(u"console"), u"console");
    const char16_t odd[] = {u'a', 0, u'b', 0xD800, u'c'};
    EXPECT_EQ(name(QStringView(odd, 5)), u"a b c");
}

TEST(MarkdownFolderBridge, CutsNamesBetweenCharacters) {
    QString title;
    for (int number = 0; number < 1000; ++number)
        title += u"👩‍👩‍👧"_s;
    const QString name = MarkdownFolderBridge::fileNameFor(title);
    EXPECT_LE(name.toUtf8().size(), 200);
    EXPECT_GE(name.toUtf8().size(), 180);
    EXPECT_TRUE(name.endsWith(u"👩‍👩‍👧"_s));
}

TEST_F(MarkdownFolderBridgeTest, TakesLongTitles) {
    const QString title(5000, u'ä');
    const auto first = notes.createNote(title, "x");
    const auto second = notes.createNote(title, "y");
    ASSERT_TRUE(first && second);
    EXPECT_NE(*first, *second);
    EXPECT_EQ(notes.listNotes(1).front().title.size(), 4096 / 2 - 1);
}

TEST_F(MarkdownFolderBridgeTest, AppendsBelowAnEmptyLine) {
    ASSERT_TRUE(notes.createNote("Plan", "one"));
    EXPECT_TRUE(notes.appendToNote("Plan.md", " \ntwo\n"));
    EXPECT_TRUE(notes.appendToNote("Plan.md", "three"));
    EXPECT_EQ(content("Plan.md"), "# Plan\n\none\n\ntwo\n\nthree\n");
    EXPECT_EQ(files(), QStringList("Plan.md"));
}

TEST_F(MarkdownFolderBridgeTest, LeavesWhatOthersWroteAsItIs) {
    put("a.md", "one\r\ntwo");
    put("b.md", "caf\xE9 \xFF\xFE\n");
    put("c.md", "");
    ASSERT_TRUE(notes.appendToNote("a.md", "x\ny"));
    ASSERT_TRUE(notes.appendToNote("b.md", "x"));
    ASSERT_TRUE(notes.appendToNote("c.md", "x"));
    EXPECT_EQ(content("a.md"), "one\r\ntwo\r\n\r\nx\r\ny\r\n");
    EXPECT_EQ(content("b.md"), "caf\xE9 \xFF\xFE\n\nx\n");
    EXPECT_EQ(content("c.md"), "x\n");
}

TEST_F(MarkdownFolderBridgeTest, FollowsLinksToFiles) {
    put("real.md", "one\n");
    ASSERT_TRUE(QFile::link(folder + "/real.md", folder + "/link.md"));
    ASSERT_TRUE(notes.appendToNote("link.md", "two"));
    EXPECT_EQ(content("real.md"), "one\n\ntwo\n");
    EXPECT_TRUE(QFileInfo(folder + "/link.md").isSymLink());
}

TEST_F(MarkdownFolderBridgeTest, RefusesBlankText) {
    ASSERT_TRUE(notes.createNote("Plan", "one"));
    EXPECT_EQ(notes.appendToNote("Plan.md", "\n ").error(), u"Nothing to append.");
}

TEST_F(MarkdownFolderBridgeTest, TellsOfANoteThatIsGone) {
    const auto note = notes.createNote("Draft", "one");
    ASSERT_TRUE(note && notes.appendToNote(*note, "two"));
    ASSERT_TRUE(QFile::remove(folder + '/' + *note));
    EXPECT_EQ(notes.appendToNote(*note, "three").error(),
              u"Couldn’t update the note. It may have been deleted — press ⌘⇧S again to start a "
              u"new note.");
    EXPECT_EQ(files(), QStringList());
    EXPECT_EQ(notes.noteBody(*note), std::nullopt);
}

TEST_F(MarkdownFolderBridgeTest, TouchesNothingButItsNotes) {
    put("plain.txt", "x");
    put(".hidden.md", "x");
    QFile outside(temporary.filePath("home/outside.md"));
    ASSERT_TRUE(outside.open(QIODevice::WriteOnly));
    QDir().mkpath(folder + "/sub.md");
    for (const QString& id : {u"../outside.md"_s, u"plain.txt"_s, u".hidden.md"_s, u"sub.md"_s,
                              u""_s, u"note://gnote/x"_s, outside.fileName()}) {
        EXPECT_FALSE(notes.appendToNote(id, "y")) << id.toStdString();
        EXPECT_EQ(notes.noteBody(id), std::nullopt) << id.toStdString();
    }
    EXPECT_TRUE(notes.listNotes(10).empty());
}

TEST_F(MarkdownFolderBridgeTest, ListsTheLatestNotesFirst) {
    put("old.md", "# Old title\nx", 20);
    put("new.md", "no heading", 1);
    put("mid.md", "#\n", 10);
    EXPECT_EQ(notes.listNotes(10),
              (std::vector<AppleNoteSummary>{
                  {"new.md", "new"}, {"mid.md", "mid"}, {"old.md", "Old title"}}));
    EXPECT_EQ(notes.listNotes(0).size(), 1U);
    for (int number = 0; number < 105; ++number)
        put(QString::number(number) + ".md", "x");
    EXPECT_EQ(notes.listNotes(500).size(), 100U);
}

TEST_F(MarkdownFolderBridgeTest, HasNoNotesWithoutAFolder) {
    EXPECT_TRUE(notes.listNotes(10).empty());
    EXPECT_EQ(notes.noteBody("Plan.md"), std::nullopt);
    EXPECT_FALSE(notes.appendToNote("Plan.md", "x"));
    MarkdownFolderBridge nowhere{QString()};
    EXPECT_FALSE(nowhere.createNote("a", "b"));
    EXPECT_TRUE(nowhere.listNotes(10).empty());
}

TEST_F(MarkdownFolderBridgeTest, IsReachedWhereItsFolderCouldBeMadeAndMakesNone) {
    EXPECT_EQ(notes.reach(), u"a folder of Markdown files");
    EXPECT_FALSE(QFileInfo::exists(folder));
    put("x.md", "x");
    EXPECT_TRUE(notes.reach());
    EXPECT_FALSE(MarkdownFolderBridge(folder + "/x.md").reach());
    EXPECT_FALSE(MarkdownFolderBridge(folder + "/x.md/below").reach());
    EXPECT_FALSE(MarkdownFolderBridge(QString()).reach());
}

TEST_F(MarkdownFolderBridgeTest, SaysWhenItCannotWrite) {
    put("x.md", "x");
    MarkdownFolderBridge blocked(folder + "/x.md");
    EXPECT_EQ(blocked.createNote("a", "b").error(),
              u"Couldn’t create the note. Vorq cannot write to the folder %1/x.md."_s.arg(folder));
}

} // namespace vorq
