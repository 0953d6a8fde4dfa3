// From the key to the notes application: the built program beside a browser and Gnote.

#include "doubles/desktop/PanelProgram.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>

#include <gmock/gmock.h>

#include <algorithm>

namespace vorq::desktop {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

const QStringList paragraphs = {
    "Lighthouses warn ships of rocks",
    "Keepers lit the lamps each night",
    "Today their lamps light themselves",
};

// Shows the paragraph whose number is pressed.
QByteArray page() {
    QString texts;
    for (const QString& text : paragraphs)
        texts += '"' + text + "\",";
    return ("<!DOCTYPE html><meta charset=\"utf-8\"><title>Page</title><p id=\"shown\">Press</p>"
            "<script>const texts = [" +
            texts +
            "];document.onkeydown = event => {"
            "if (event.key in texts) shown.textContent = texts[event.key]};</script>")
        .toUtf8();
}

class NoteKeysTest : public testing::Test {
  protected:
    // The next session has a bus of its own, which would get the connection of this one.
    ~NoteKeysTest() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    void SetUp() override {
        ASSERT_TRUE(ask("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                        "ListActivatableNames")
                        .toStringList()
                        .contains("org.gnome.Gnote"))
            << "install the package gnote";
        m_vorq.start();
    }

    [[nodiscard]] QVariant ask(const QString& service, const QString& path,
                               const QString& interface, const QString& method,
                               const QVariantList& arguments = {}) const {
        QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
        call.setArguments(arguments);
        return m_bus.call(call).arguments().value(0);
    }
    [[nodiscard]] QVariant askGnote(const QString& method, const QVariantList& arguments) const {
        return ask("org.gnome.Gnote", "/org/gnome/Gnote/RemoteControl",
                   "org.gnome.Gnote.RemoteControl", method, arguments);
    }
    [[nodiscard]] std::vector<std::string> notes() const {
        std::vector<std::string> contents;
        for (const QString& note : askGnote("ListAllNotes", {}).toStringList())
            contents.push_back(
                askGnote("GetNoteContents", {note}).toString().trimmed().toStdString());
        return contents;
    }
    void waitForNote(const QString& content) const {
        try {
            DesktopSession::waitUntil("the note", [&] {
                return std::ranges::count(notes(), content.toStdString()) == 1;
            });
        } catch (const std::runtime_error&) {
            EXPECT_THAT(notes(), Contains(content.toStdString()));
            throw;
        }
    }

    void highlightParagraph(const Application& browser, qsizetype number) {
        DesktopSession& session = m_vorq.session;
        int clicks = 0; // at places that make no double click
        highlight(
            session,
            [&] {
                const QPoint corner = session.geometry(browser.window).bottomRight();
                session.click(corner - QPoint(60, 60 + 30 * (++clicks % 5)));
                session.key({QString::number(number), "ctrl+a"});
            },
            paragraphs[number].toUtf8());
    }

    [[nodiscard]] QByteArray captureLog() const {
        QFile file(m_vorq.session.home() + "/.local/share/Vorq/Library/capture-debug.log");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    PanelProgram m_vorq;
    QDBusConnection m_bus = QDBusConnection::connectToBus(m_vorq.session.busAddress(), "note-keys");
};

TEST_F(NoteKeysTest, ThreeTextsOfABrowserAndASealGiveTwoNotesAndTheBrowserKeepsTheFocus) {
    DesktopSession& session = m_vorq.session;
    const Application browser = openChromium(session, page(), true);
    session.own("clipboard", "of the user");
    for (qsizetype number = 0; number < 3; ++number) {
        highlightParagraph(browser, number);
        session.key({"super+shift+s"});
        const QString content = paragraphs.mid(0, number + 1).join("\n\n");
        waitForNote(content);
        EXPECT_EQ(session.activeWindow(), browser.window);
    }
    session.key({"super+shift+p"});
    highlightParagraph(browser, 1);
    session.key({"super+shift+s"});
    waitForNote(paragraphs[1]);
    EXPECT_EQ(session.activeWindow(), browser.window);
    EXPECT_EQ(m_vorq.panel(), 0U);
    EXPECT_EQ(session.selection("clipboard"), "of the user");
    EXPECT_FALSE(m_vorq.wasSent("Lighthouses")) << "a note is nobody else's";
}

TEST_F(NoteKeysTest, APasswordThatItsKeeperCopiesIsNotSaved) {
    DesktopSession& session = m_vorq.session;
    const Application keeper = openAccountList(session, "correct horse staple");
    DesktopSession::waitUntil("the password to be copied", [&] {
        session.key({"ctrl+c"});
        return session.selection("clipboard") == "correct horse staple";
    });
    session.own("clipboard", "of the user");
    session.key({"super+shift+s"});
    DesktopSession::waitUntil("the press to be dealt with",
                              [&] { return captureLog().contains("note-save"); });
    EXPECT_THAT(captureLog().toStdString(), HasSubstr("note-save empty from test_account_list"));
    EXPECT_THAT(notes(), Not(Contains(HasSubstr("horse"))));
    EXPECT_EQ(session.selection("clipboard"), "of the user");
    EXPECT_EQ(session.activeWindow(), keeper.window);
}

} // namespace
} // namespace vorq::desktop
