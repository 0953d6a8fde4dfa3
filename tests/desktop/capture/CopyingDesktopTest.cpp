// What real applications do when they are sent their shortcuts to copy and to paste.

#include "capture/copy/CopyFallback.h"
#include "capture/copy/PasteOver.h"
#include "capture/selection/CaptureLog.h"
#include "doubles/desktop/CaptureDesktop.h"
#include "doubles/desktop/ClipboardDesktop.h"
#include "doubles/desktop/ForeignToolkits.h"
#include "platform/linux/desktop/SystemClock.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/linux/x11/copying/X11KeyPoster.h"
#include "platform/linux/x11/copying/X11Pasteboard.h"

#include <QElapsedTimer>
#include <QTimer>

#include <gmock/gmock.h>

#include <csignal>

namespace vorq::desktop {
namespace {

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
    /// A page is selected only when it has the focus; in a terminal lines are clicked; in a sheet
    /// a cell is gone to.
    enum class Selecting { Keys, Page, Clicks, Cell } selecting = Selecting::Keys;
    const char* copyKeys = "ctrl+c";
    const char* text = "Grüße an alle";
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
        // What was pressed before may be answered late, or again, and then emptied.
        constexpr std::chrono::milliseconds calm(300);
        QElapsedTimer sinceWrite;
        DesktopSession::waitUntil("the clipboard of the user", [&] {
            if (pasteboard.lastChange().writer == QCoreApplication::applicationPid() &&
                sinceWrite.isValid())
                return sinceWrite.hasExpired(calm.count());
            (void)awaited(user->write(richContents(), user->lastChange().count));
            sinceWrite.start();
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
    TurnQueue turns;
    CopyFallback fallback{{clock, pasteboard, keys, workspace}, turns};
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
        case Copied::Selecting::Cell:
            return session.key({"ctrl+Home"});
        case Copied::Selecting::Clicks:
            // The first line, below a bar of tools that has no button there.
            static int row = 0;
            return session.click(window.topLeft() + QPoint(300, 36 + 8 * (row++ % 6)), 3);
        }
    }
};

TEST_P(Copying, CapturesTheSelectionAndGivesTheClipboardBack) {
    const QString words = QString::fromUtf8(GetParam().text);
    const Application application = GetParam().open(session, GetParam().text);
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
                    Copied{"konsole", openKonsole, Copied::Selecting::Clicks, "ctrl+shift+c"},
                    Copied{"calc", openCalc, Copied::Selecting::Cell},
                    Copied{"evince", openEvince, Copied::Selecting::Keys, "ctrl+c", "A line"}),
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

/// Posts as the other does; something may happen right before.
class HookedKeyPoster final : public KeyPoster {
  public:
    explicit HookedKeyPoster(KeyPoster& keys) : m_keys(keys) {}

    std::function<void()> onPost;

    [[nodiscard]] PortSupport supported() const override { return m_keys.supported(); }
    [[nodiscard]] std::uint32_t heldModifiers() const override { return m_keys.heldModifiers(); }
    bool post(KeyChord chord, ProcessId target) override {
        if (onPost) onPost();
        return m_keys.post(chord, target);
    }
    bool press(const HotKeyChord& chord, ProcessId target) override {
        return m_keys.press(chord, target);
    }
    [[nodiscard]] bool wasUsedSincePost() override { return m_keys.wasUsedSincePost(); }

  private:
    KeyPoster& m_keys;
};

class PastingDesktop : public CopyingDesktop {
  protected:
    void open(Application (*program)(DesktopSession&, const QByteArray&), const QByteArray& text) {
        application = program(session, text);
        DesktopSession::waitUntil("the text to be selected", [&] {
            session.key({"ctrl+a", "ctrl+c"});
            return session.selection("clipboard").trimmed() == text;
        });
        fillClipboard();
    }

    void selectMiddle() const {
        session.key({"ctrl+Home"});
        session.key(QStringList(6, "Right"));
        session.key(QStringList(4, "shift+Right"));
    }

    [[nodiscard]] PasteOver::Target middle() const {
        return {.source = application.process,
                .window = application.window,
                .original = "beta",
                .range = TextRange{.location = 6, .length = 4}};
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
    HookedKeyPoster hooked{keys};
    CaptureLog log{clock, session.home() + "/capture.log", {}};
    PasteOver paster{{clock, *accessibility, pasteboard, hooked, workspace, fallback, log, turns}};
    Application application;
};

class Pasting : public PastingDesktop, public testing::WithParamInterface<Copied> {};

TEST_P(Pasting, ReplacesTheSelectionAloneAndOneUndoTakesThatBack) {
    const bool isSheet = GetParam().selecting == Copied::Selecting::Cell;
    const QString between = isSheet ? "\t" : " ";
    const QStringList words{"alpha", "beta", "gamma"};
    open(GetParam().open, words.join(between).toUtf8());
    PasteOver::Target target = middle();
    if (isSheet) {
        session.key({"ctrl+Home", "Right"});
        target.range.reset();
    } else {
        selectMiddle();
    }

    EXPECT_EQ(awaited(paster.replaceSelectedText("Grüße", target, {})),
              PasteOver::Outcome::Replaced);
    EXPECT_EQ(held(), richContents());
    expectWholeText(QStringList({"alpha", "Grüße", "gamma"}).join(between));
    session.key({"ctrl+z"});
    expectWholeText(words.join(between));
}

TEST_F(PastingDesktop, GivesTheTextToAnApplicationThatStandsStillForAWhile) {
    open(openMousepad, "alpha beta gamma");
    selectMiddle();
    std::unique_ptr<Stopped> stopped;
    hooked.onPost = [&] {
        stopped = std::make_unique<Stopped>(application.process);
        DesktopSession::waitUntil("it to stand still", [&] { return stopped->holds(); });
        QTimer::singleShot(std::chrono::milliseconds(900), [&] { stopped.reset(); });
    };

    EXPECT_EQ(awaited(paster.replaceSelectedText("Grüße", middle(), {})),
              PasteOver::Outcome::Replaced);
    EXPECT_FALSE(stopped);
    EXPECT_EQ(held(), richContents());
    expectWholeText("alpha Grüße gamma");
}

TEST_F(PastingDesktop, LeavesTheTextOnTheClipboardWhereTheApplicationIsClosed) {
    open(openMousepad, "alpha beta gamma");
    selectMiddle();
    const PasteOver::Target target = middle();
    ::kill(application.process, SIGKILL);
    session.waitForNoWindow("mousepad");

    EXPECT_EQ(awaited(paster.replaceSelectedText("Grüße", target, {})),
              PasteOver::Outcome::OnClipboard);
    EXPECT_EQ(session.selection("clipboard"), "Grüße");
}

INSTANTIATE_TEST_SUITE_P(
    Pasting, Pasting,
    testing::Values(Copied{"mousepad", openMousepad}, Copied{"texteditor", openTextEditor},
                    Copied{"qt6", openTextWindow}, Copied{"writer", openWriter},
                    Copied{"firefox", openFirefoxField}, Copied{"chromium", openChromiumField},
                    Copied{"calc", openCalc, Copied::Selecting::Cell}),
    testing::PrintToStringParamName());

TEST_F(CopyingDesktop, CapturesNoPasswordThatItsOwnerMarksAsASecret) {
    const Application manager = openAccountList(session, "Tr0ub4dor&3");
    DesktopSession::waitUntil("the password to be copied", [&] {
        session.key({"ctrl+c"});
        return session.selection("clipboard") == "Tr0ub4dor&3";
    });
    fillClipboard();
    EXPECT_EQ(copy(manager.process), "");
    EXPECT_EQ(held(), richContents());
}

TEST_F(CopyingDesktop, KeepsWhatTheUserCopiesOnTheWayToAnotherApplication) {
    const Application other = openTextWindow(session, "gamma");
    const Application editor = openMousepad(session, "alpha beta");
    DesktopSession::waitUntil("the text to be selected", [&] {
        session.key({"ctrl+a", "ctrl+c"});
        return session.selection("clipboard") == "alpha beta";
    });
    fillClipboard();
    ASSERT_EQ(copy(editor.process), "alpha beta");
    session.key({"ctrl+Home", "ctrl+shift+Right", "ctrl+c", "alt+Tab"});
    DesktopSession::waitUntil("the other application",
                              [&] { return session.activeWindow() == other.window; });
    DesktopSession::waitUntil("the user's copy",
                              [&] { return pasteboard.lastChange().writer == editor.process; });
    session.key({"ctrl+a"});
    EXPECT_EQ(copy(other.process), "gamma");
    EXPECT_EQ(session.selection("clipboard").trimmed(), "alpha");
}

TEST_F(CopyingDesktop, EndsNothingInATerminal) {
    fillClipboard();
    const Application terminal = openXterm(session, "words");
    EXPECT_EQ(copy(terminal.process), "");
    // Ctrl+C would end what runs in it, and so the terminal.
    session.type("x");
    EXPECT_EQ(session.activeWindow(), terminal.window);
    EXPECT_EQ(held(), richContents());
}

} // namespace
} // namespace vorq::desktop
