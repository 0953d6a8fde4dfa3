#include "platform/linux/notes/GnoteBridge.h"

#include "doubles/platform/PrivateSession.h"

#include <QDBusMessage>
#include <QThread>

#include <csignal>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

const QString service = u"org.gnome.Gnote"_s;

// Real Gnote in a session of its own, which all tests of the suite share.
struct GnoteBridgeTest : testing::Test {
    static void SetUpTestSuite() { session = std::make_unique<PrivateSession>(); }
    static void TearDownTestSuite() { session.reset(); }

    void SetUp() override {
        ASSERT_EQ(session->problem(), QString());
        ASSERT_TRUE(GnoteBridge::isAvailable(session->bus())) << "install the package gnote";
    }

    QVariant ask(const QString& method, const QVariantList& arguments) const {
        QDBusMessage call = QDBusMessage::createMethodCall(
            service, "/org/gnome/Gnote/RemoteControl", "org.gnome.Gnote.RemoteControl", method);
        call.setArguments(arguments);
        const QDBusMessage reply = session->bus().call(call);
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
        return reply.arguments().value(0);
    }

    QString contentOf(const QString& note) const {
        return ask("GetNoteContents", {note}).toString();
    }

    void signalGnote(int signal) const {
        const qint64 process = session->processOf(service);
        ASSERT_GT(process, 0);
        ASSERT_EQ(::kill(static_cast<pid_t>(process), signal), 0);
    }

    static inline std::unique_ptr<PrivateSession> session;
    GnoteBridge notes{session->bus()};
};

} // namespace

TEST_F(GnoteBridgeTest, StartsGnoteAndCreatesANote) {
    const auto note = notes.createNote("Rivers", "first\nsecond & <third>");
    ASSERT_TRUE(note) << note.error().toStdString();
    EXPECT_TRUE(GnoteBridge::ownsNote(*note));
    EXPECT_EQ(notes.noteBody(*note), u"Rivers\n\nfirst\nsecond & <third>");
    EXPECT_EQ(ask("GetNoteTitle", {*note}).toString(), u"Rivers");
}

TEST_F(GnoteBridgeTest, DoesNotRepeatATitleThatTheTextBeginsWith) {
    const auto note = notes.createNote("Springs", "Springs\nmore");
    ASSERT_TRUE(note);
    EXPECT_EQ(notes.noteBody(*note), u"Springs\nmore");
}

TEST_F(GnoteBridgeTest, NumbersTitlesThatAreTaken) {
    const auto first = notes.createNote("Twice", "a");
    const auto second = notes.createNote("Twice", "b");
    const auto third = notes.createNote("Twice", "c");
    ASSERT_TRUE(first && second && third);
    EXPECT_EQ(notes.noteBody(*first), u"Twice\n\na");
    EXPECT_EQ(notes.noteBody(*second), u"Twice (2)\n\nb");
    EXPECT_EQ(notes.noteBody(*third), u"Twice (3)\n\nc");
}

TEST_F(GnoteBridgeTest, TakesAnyTitle) {
    QString everything;
    for (int unit = 0; unit < 0x2100; ++unit)
        everything += QChar(static_cast<char16_t>(unit));
    const QStringList titles{"",
                             " \n ",
                             "a\nb\rc",
                             "../../etc/passwd",
                             "<b>&amp;\"'",
                             "😀👩‍👩‍👧",
                             "x\\y",
                             everything,
                             QString(5000, 'x'),
                             QString(QChar(u'a')) + QChar(u'\0') + QChar(u'b') + QChar(0xD800)};
    for (const QString& title : titles) {
        const auto note = notes.createNote(title, "the body");
        ASSERT_TRUE(note) << title.toStdString();
        const QString content = contentOf(*note);
        EXPECT_TRUE(content.endsWith(u"\n\nthe body")) << content.toStdString();
        EXPECT_EQ(content.section('\n', 0, 0), ask("GetNoteTitle", {*note}).toString());
    }
    EXPECT_TRUE(contentOf(notes.createNote("line\nbreak", "x").value()).startsWith("line break\n"));
}

TEST_F(GnoteBridgeTest, AppendsBelowAnEmptyLine) {
    const auto note = notes.createNote("Append", "one");
    ASSERT_TRUE(note);
    EXPECT_TRUE(notes.appendToNote(*note, " two & <2>\n"));
    EXPECT_TRUE(notes.appendToNote(*note, "three"));
    EXPECT_EQ(notes.noteBody(*note), u"Append\n\none\n\ntwo & <2>\n\nthree");
}

TEST_F(GnoteBridgeTest, KeepsTheFormatOfANoteThatIsAppendedTo) {
    const auto note = notes.createNote("Format", "x");
    ASSERT_TRUE(note);
    const QString content = "Format\n\n<bold>bold</bold> and\n<list><list-item dir=\"ltr\">one\n"
                            "</list-item><list-item dir=\"ltr\">two</list-item></list>";
    ASSERT_TRUE(ask("SetNoteContentsXml",
                    {*note, "<note-content version=\"0.1\">" + content + "</note-content>"})
                    .toBool());
    ASSERT_TRUE(notes.appendToNote(*note, "more"));
    const QString xml = ask("GetNoteContentsXml", {*note}).toString();
    EXPECT_TRUE(xml.contains(content + "\n\nmore</note-content>")) << xml.toStdString();
}

TEST_F(GnoteBridgeTest, AppendsToEmptyNotes) {
    const auto note = notes.createNote("Empty", "x");
    ASSERT_TRUE(note);
    ASSERT_TRUE(ask("SetNoteContentsXml", {*note, "<note-content/>"}).toBool());
    ASSERT_TRUE(notes.appendToNote(*note, "more"));
    EXPECT_TRUE(contentOf(*note).endsWith("more"));
}

// Gnote empties a note whose new content is not well-formed.
TEST_F(GnoteBridgeTest, LosesNothingOfNotesWithControlCharacters) {
    const auto note = notes.createNote("Control", "x");
    ASSERT_TRUE(note);
    ASSERT_TRUE(ask("SetNoteContents", {*note, "Control\n\nkept\x01\x0Btext"}).toBool());
    ASSERT_TRUE(notes.appendToNote(*note, "mo\x01re\x1F"));
    const QString content = contentOf(*note);
    EXPECT_TRUE(content.startsWith("Control\n\nkept")) << content.toStdString();
    EXPECT_TRUE(content.endsWith("\n\nmore")) << content.toStdString();
}

TEST_F(GnoteBridgeTest, TakesAnyText) {
    QString everything = "begin";
    for (int unit = 0; unit < 0x10000; ++unit)
        everything += QChar(static_cast<char16_t>(unit));
    everything += "end";
    const auto note = notes.createNote("Everything", everything);
    ASSERT_TRUE(note);
    ASSERT_TRUE(notes.appendToNote(*note, everything));
    ASSERT_TRUE(notes.appendToNote(*note, "last"));
    const QString content = contentOf(*note);
    EXPECT_EQ(content.count("begin"), 2);
    EXPECT_EQ(content.count("end"), 2);
    EXPECT_TRUE(content.endsWith("last"));
}

TEST_F(GnoteBridgeTest, RefusesBlankText) {
    EXPECT_EQ(notes.appendToNote("note://gnote/x", " \n").error(), u"Nothing to append.");
}

TEST_F(GnoteBridgeTest, TellsOfANoteThatIsGone) {
    const auto note = notes.createNote("Draft", "one");
    ASSERT_TRUE(note);
    ASSERT_TRUE(notes.appendToNote(*note, "two"));
    ASSERT_TRUE(ask("DeleteNote", {*note}).toBool());
    const auto appended = notes.appendToNote(*note, "three");
    ASSERT_FALSE(appended);
    EXPECT_EQ(appended.error(), u"Couldn’t update the note. It may have been deleted — press ⌘⇧S "
                                u"again to start a new note.");
    EXPECT_EQ(notes.noteBody(*note), std::nullopt);
    EXPECT_FALSE(notes.appendToNote("Plan.md", "x"));
    EXPECT_TRUE(notes.createNote("Draft", "three"));
}

TEST_F(GnoteBridgeTest, ListsTheLatestNotesFirst) {
    ASSERT_TRUE(notes.createNote("Older", "x"));
    QThread::sleep(1); // dates count seconds
    const auto note = notes.createNote("Latest", "x");
    ASSERT_TRUE(note);
    EXPECT_EQ(notes.listNotes(1), (std::vector<AppleNoteSummary>{{*note, "Latest"}}));
    EXPECT_EQ(notes.listNotes(0).size(), 1U);
    EXPECT_EQ(notes.listNotes(2).size(), 2U);
}

TEST_F(GnoteBridgeTest, ListsAHundredNotesAtMost) {
    for (int number = 0; number < 105; ++number)
        ASSERT_TRUE(notes.createNote(u"Many %1"_s.arg(number), "x"));
    EXPECT_EQ(notes.listNotes(500).size(), 100U);
}

TEST_F(GnoteBridgeTest, StartsGnoteAnewWhenItWasKilled) {
    ASSERT_TRUE(notes.createNote("Before", "x"));
    signalGnote(SIGKILL);
    const auto note = notes.createNote("After", "x");
    ASSERT_TRUE(note) << note.error().toStdString();
    EXPECT_EQ(notes.noteBody(*note), u"After\n\nx");
}

TEST_F(GnoteBridgeTest, DoesNotWaitLongForAGnoteThatHangs) {
    const auto note = notes.createNote("Hangs", "x");
    ASSERT_TRUE(note);
    signalGnote(SIGSTOP);
    GnoteBridge impatient(session->bus(), {.operation = 300ms});
    EXPECT_EQ(impatient.createNote("T", "B").error(),
              u"Couldn’t create the note. Gnote does not answer.");
    EXPECT_FALSE(impatient.appendToNote(*note, "lost?"));
    EXPECT_TRUE(impatient.listNotes(10).empty());
    EXPECT_EQ(impatient.noteBody(*note), std::nullopt);
    signalGnote(SIGCONT);
    EXPECT_EQ(notes.noteBody(*note), u"Hangs\n\nx");
}

TEST(GnoteBridge, FailsWithoutADisplay) {
    const PrivateSession session(PrivateSession::Display::None);
    ASSERT_EQ(session.problem(), QString());
    GnoteBridge notes(session.bus());
    EXPECT_EQ(notes.createNote("T", "B").error(),
              u"Couldn’t create the note. Gnote does not answer.");
    EXPECT_TRUE(notes.listNotes(5).empty());
}

TEST(GnoteBridge, IsNotAvailableOnABusThatDoesNotKnowIt) {
    const PrivateSession session(PrivateSession::Display::None, PrivateSession::Services::None);
    ASSERT_EQ(session.problem(), QString());
    EXPECT_FALSE(GnoteBridge::isAvailable(session.bus()));
    EXPECT_FALSE(GnoteBridge::isAvailable(QDBusConnection("none")));
    GnoteBridge notes(session.bus());
    EXPECT_FALSE(notes.createNote("T", "B"));
}

} // namespace vorq
