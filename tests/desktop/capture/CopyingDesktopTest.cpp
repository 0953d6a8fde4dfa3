// What real applications do when they are sent their shortcuts to copy and to paste.

#include "capture/copy/CopyFallback.h"
#include "capture/copy/PasteOver.h"
#include "doubles/desktop/CaptureDesktop.h"
#include "doubles/desktop/ClipboardDesktop.h"
#include "doubles/desktop/ForeignToolkits.h"
#include "platform/linux/desktop/SystemClock.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/linux/x11/copying/X11KeyPoster.h"
#include "platform/linux/x11/copying/X11Pasteboard.h"

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

const QString words = QStringLiteral("Grüße an alle");

QByteArray pageOf(const QString& text) {
    return "<!DOCTYPE html><meta charset=\"utf-8\"><title>Seite</title><p>" + text.toUtf8() +
           "</p>";
}

Application openFirefoxPage(DesktopSession& session, const QByteArray& text) {
    return openFirefox(session, pageOf(QString::fromUtf8(text)));
}

Application openBlindChromium(DesktopSession& session, const QByteArray& text) {
    return openChromium(session, pageOf(QString::fromUtf8(text)), false);
}

struct Copied {
    const char* name;
    Application (*open)(DesktopSession&, const QByteArray&);
    /// A page is selected only when it has the focus; in a terminal lines are clicked.
    enum class Selecting { Keys, Page, Clicks } selecting = Selecting::Keys;
    const char* copyKeys = "ctrl+c";
};

void PrintTo(const Copied& copied, std::ostream* out) {
    *out << copied.name;
}

class CopyingDesktop : public testing::Test {
  protected:
    [[nodiscard]] QString copy(ProcessId process) {
        return awaited(fallback.captureFromCopyShortcutFast(process, {}));
    }

    void fillClipboard() {
        // What was pressed before may be answered again.
        DesktopSession::waitUntil("the clipboard of the user", [&] {
            if (pasteboard.lastChange().writer == QCoreApplication::applicationPid()) return true;
            (void)awaited(user->write(richContents(), user->lastChange().count));
            return false;
        });
    }

    [[nodiscard]] PasteboardContents held() {
        return awaited(pasteboard.contents({}))
            .value_or(PasteboardContents{clipboardForm("could not be read", {})});
    }

    DesktopSession session;
    SystemClock clock;
    X11Pasteboard pasteboard;
    X11KeyPoster keys;
    X11Workspace workspace;
    std::unique_ptr<X11Pasteboard> user = std::make_unique<X11Pasteboard>();
    CopyFallback fallback{{clock, pasteboard, keys, workspace}};
};

class Copying : public CopyingDesktop, public testing::WithParamInterface<Copied> {
  protected:
    void select(const Application& application) const {
        const QRect window = session.geometry(application.window);
        switch (GetParam().selecting) {
        case Copied::Selecting::Keys:
            return session.key({"ctrl+a"});
        case Copied::Selecting::Page:
            session.click(window.bottomRight() - QPoint(40, 40));
            return session.key({"ctrl+a"});
        case Copied::Selecting::Clicks:
            // The first line, below a bar of tools that has no button there.
            static int row = 0;
            return session.click(window.topLeft() + QPoint(300, 36 + 8 * (row++ % 6)), 3);
        }
    }
};

TEST_P(Copying, CapturesTheSelectionAndGivesTheClipboardBack) {
    const Application application = GetParam().open(session, words.toUtf8());
    // While it still loads, it copies nothing, or late.
    DesktopSession::waitUntil("the text to be selected", [&] {
        select(application);
        session.key({GetParam().copyKeys});
        return QString::fromUtf8(session.selection("clipboard")).trimmed() == words;
    });
    fillClipboard();
    EXPECT_EQ(copy(application.process), words);
    EXPECT_EQ(held(), richContents());
    // Also when whoever gave it at first is gone.
    user.reset();
    EXPECT_EQ(copy(application.process), words);
    EXPECT_EQ(held(), richContents());
}

INSTANTIATE_TEST_SUITE_P(
    Copying, Copying,
    testing::Values(Copied{"mousepad", openMousepad}, Copied{"texteditor", openTextEditor},
                    Copied{"qt6", openTextWindow}, Copied{"writer", openWriter},
                    Copied{"firefox", openFirefoxPage, Copied::Selecting::Page},
                    Copied{"chromium", openBlindChromium, Copied::Selecting::Page},
                    Copied{"konsole", openKonsole, Copied::Selecting::Clicks, "ctrl+shift+c"}),
    testing::PrintToStringParamName());

QByteArray fieldOf(const QByteArray& text) {
    return "<!DOCTYPE html><meta charset=\"utf-8\"><title>Seite</title><textarea autofocus>" +
           text + "</textarea>";
}

Application openFirefoxField(DesktopSession& session, const QByteArray& text) {
    return openFirefox(session, fieldOf(text));
}

Application openChromiumField(DesktopSession& session, const QByteArray& text) {
    return openChromium(session, fieldOf(text), false);
}

class Pasting : public CopyingDesktop, public testing::WithParamInterface<Copied> {
  protected:
    void selectMiddle() const {
        session.key({"ctrl+Home"});
        session.key(QStringList(6, "Right"));
        session.key(QStringList(4, "shift+Right"));
    }
    // On a busy machine an answer may come too late.
    void expectWholeText(const QString& expected) {
        QString last;
        try {
            DesktopSession::waitUntil("the whole text", [&] {
                session.key({"ctrl+a"});
                last = copy(application.process);
                return last == expected;
            });
        } catch (const std::runtime_error&) {
            ADD_FAILURE() << "expected \"" << expected.toStdString() << "\", read \""
                          << last.toStdString() << '"';
        }
    }

    std::unique_ptr<AtSpiAccessibility> accessibility = connected();
    PasteOver paster{{clock, *accessibility, pasteboard, keys, workspace, fallback}};
    Application application;
};

TEST_P(Pasting, ReplacesTheSelectionAloneAndOneUndoTakesThatBack) {
    application = GetParam().open(session, "alpha beta gamma");
    DesktopSession::waitUntil("the text to be selected", [&] {
        session.key({"ctrl+a", "ctrl+c"});
        return session.selection("clipboard").trimmed() == "alpha beta gamma";
    });
    fillClipboard();
    selectMiddle();
    const PasteOver::Target target{.source = application.process,
                                   .window = application.window,
                                   .original = "beta",
                                   .range = TextRange{.location = 6, .length = 4}};

    EXPECT_EQ(awaited(paster.replaceSelectedText("Grüße", target, {})),
              PasteOver::Outcome::Replaced);
    EXPECT_EQ(held(), richContents());
    expectWholeText("alpha Grüße gamma");
    session.key({"ctrl+z"});
    expectWholeText("alpha beta gamma");
}

INSTANTIATE_TEST_SUITE_P(
    Pasting, Pasting,
    testing::Values(Copied{"mousepad", openMousepad}, Copied{"texteditor", openTextEditor},
                    Copied{"qt6", openTextWindow}, Copied{"writer", openWriter},
                    Copied{"firefox", openFirefoxField}, Copied{"chromium", openChromiumField}),
    testing::PrintToStringParamName());

TEST_F(CopyingDesktop, EndsNothingInATerminal) {
    fillClipboard();
    const Application terminal = openXterm(session, words.toUtf8());
    EXPECT_EQ(copy(terminal.process), "");
    // Ctrl+C would end what runs in it, and so the terminal.
    session.type("x");
    EXPECT_EQ(session.activeWindow(), terminal.window);
    EXPECT_EQ(held(), richContents());
}

} // namespace
} // namespace vorq::desktop
