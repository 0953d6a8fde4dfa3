#include "capture/notes/AppleNotesExport.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace vorq {
namespace {

constexpr QStringView createDenied =
    u"Couldn’t create the note. Allow Vorq to control Notes in System Settings → Privacy & "
    u"Security → Automation.";
constexpr QStringView appendDenied =
    u"Couldn’t update the note. Allow Vorq to control Notes in System Settings → Privacy & "
    u"Security → Automation.";

// Answers scripts one after the other and keeps what it was asked.
struct AppleNotesExportTest : testing::Test {
    std::vector<std::optional<QString>> answers;
    QStringList scripts;
    int permissionRequests = 0;
    AutomationPermission permission = AutomationPermission::Allowed;
    AppleNotesExport notes{[this](const QString& script) -> std::optional<QString> {
                               scripts += script;
                               if (answers.empty()) return std::nullopt;
                               const std::optional<QString> answer = answers.front();
                               answers.erase(answers.begin());
                               return answer;
                           },
                           [this] {
                               ++permissionRequests;
                               return permission;
                           }};
};

} // namespace

TEST(AppleNotes, WritesTextAsHTMLOnOneLine) {
    EXPECT_EQ(applenotes::notesHTML(u"a & <b>\r\nc\rd\n"),
              u"<div>a &amp; &lt;b&gt;<br>c<br>d<br></div>");
}

TEST(AppleNotes, EscapesStringsOfScripts) {
    EXPECT_EQ(applenotes::escaped(u"a\\\"b\"\r\nc"), u"a\\\\\\\"b\\\"  c");
}

TEST(AppleNotes, PutsTitleAndBodyIntoThePropertiesRecord) {
    const QString script = applenotes::createNoteScript(u"A \"b\"\nc", u"x\ny");
    EXPECT_EQ(script.count("{name:\"A \\\"b\\\" c\", body:\"<div>x<br>y</div>\"}"), 3);
    EXPECT_TRUE(applenotes::createNoteScript(u"", u"").contains(u"{name:\"Untitled\","));
}

TEST(AppleNotes, BoundsTheLengthOfTheList) {
    EXPECT_TRUE(applenotes::listNotesScript(0).contains(u"noteCount ≥ 1 then"));
    EXPECT_TRUE(applenotes::listNotesScript(-9).contains(u"noteCount ≥ 1 then"));
    EXPECT_TRUE(applenotes::listNotesScript(500).contains(u"noteCount ≥ 100 then"));
    EXPECT_TRUE(applenotes::listNotesScript(7).contains(u"noteCount ≥ 7 then"));
}

TEST(AppleNotes, ReadsListsOfNotes) {
    using Notes = std::vector<AppleNoteSummary>;
    EXPECT_EQ(applenotes::parseNotesList(u"id1\tA\tB\n\nno tab\n\tno id\n id2 \t \r\n"),
              (Notes{{u"id1"_qs, u"A\tB"_qs}, {u"id2"_qs, u"Untitled"_qs}}));
    EXPECT_EQ(applenotes::parseNotesList(u""), Notes());
}

TEST(AppleNotes, ReducesHTMLToItsText) {
    EXPECT_EQ(applenotes::cleanNoteHTML(u"<div>a&nbsp;<b>b</b></div>\n<br> &amp;lt; 1 < 2"),
              u"a b < 1 < 2");
    EXPECT_EQ(applenotes::cleanNoteHTML(u"a<>b<c\n>d"), u"a<>b d");
    EXPECT_EQ(applenotes::cleanNoteHTML(u"<div><br></div>&nbsp;"), std::nullopt);
    EXPECT_EQ(applenotes::cleanNoteHTML(u""), std::nullopt);
}

TEST_F(AppleNotesExportTest, GivesTheIdentityOfANewNote) {
    answers = {u" x-coredata://1 \n"_qs};
    EXPECT_EQ(notes.createNote("T", "B"), u"x-coredata://1");
    EXPECT_EQ(scripts, QStringList(applenotes::createNoteScript(u"T", u"B")));
    EXPECT_EQ(permissionRequests, 1);
}

TEST_F(AppleNotesExportTest, CreatesNothingWhenDenied) {
    permission = AutomationPermission::Denied;
    EXPECT_EQ(notes.createNote("T", "B").error(), createDenied);
    EXPECT_EQ(notes.appendToNote("id", "B").error(), appendDenied);
    EXPECT_TRUE(scripts.isEmpty());
}

TEST_F(AppleNotesExportTest, LetsTheScriptFailWhenThePermissionIsUnknown) {
    permission = AutomationPermission::Unknown;
    answers = {std::nullopt, u" "_qs, std::nullopt};
    EXPECT_EQ(notes.createNote("T", "B").error(), createDenied);
    EXPECT_EQ(notes.createNote("T", "B").error(), createDenied);
    EXPECT_EQ(notes.appendToNote("id", "B").error(),
              u"Couldn’t update the note. It may have been deleted — press ⌘⇧S again to start a "
              u"new note.");
    EXPECT_EQ(scripts.size(), 3);
}

TEST_F(AppleNotesExportTest, AppendsTrimmedText) {
    answers = {u""_qs};
    EXPECT_TRUE(notes.appendToNote("a\"b", "\n text \n"));
    EXPECT_EQ(scripts, QStringList(applenotes::appendToNoteScript(u"a\"b", u"text")));
    EXPECT_EQ(scripts.front().count("note id \"a\\\"b\""), 1);
    EXPECT_EQ(scripts.front().count("whose id is \"a\\\"b\")"), 1);
    EXPECT_EQ(scripts.front().count("& \"<br><br>\" & \"<div>text</div>\""), 2);
}

TEST_F(AppleNotesExportTest, AppendsNothingBlankAndAsksForNoPermission) {
    EXPECT_EQ(notes.appendToNote("id", " \n ").error(), u"Nothing to append.");
    EXPECT_EQ(permissionRequests, 0);
    EXPECT_TRUE(scripts.isEmpty());
}

TEST_F(AppleNotesExportTest, ReadsPlainTextAsItCame) {
    answers = {u" text\n"_qs};
    EXPECT_EQ(notes.noteBody("id"), u" text\n");
    EXPECT_EQ(scripts.size(), 1);
}

TEST_F(AppleNotesExportTest, FallsBackOnTheHTML) {
    answers = {u" \n"_qs, u"<div>a<br>b</div>"_qs};
    EXPECT_EQ(notes.noteBody("id"), u"a b");
    EXPECT_EQ(scripts,
              (QStringList{applenotes::noteTextScript(u"id"), applenotes::noteHTMLScript(u"id")}));
    answers = {std::nullopt, std::nullopt};
    EXPECT_EQ(notes.noteBody("id"), std::nullopt);
}

TEST_F(AppleNotesExportTest, ListsWithoutAskingForThePermission) {
    answers = {u"1\tA\n"_qs, std::nullopt};
    EXPECT_EQ(notes.listNotes(5), (std::vector<AppleNoteSummary>{{u"1"_qs, u"A"_qs}}));
    EXPECT_TRUE(notes.listNotes(5).empty());
    EXPECT_EQ(permissionRequests, 0);
}

} // namespace vorq
