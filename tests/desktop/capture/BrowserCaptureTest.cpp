// Selections on pages of browsers.

#include "doubles/desktop/CaptureDesktop.h"

#include <QRect>

namespace vorq::desktop {
namespace {

// Black text on white, at places that are the same in all browsers.
const QByteArray page = R"(<!DOCTYPE html><html><head><meta charset="utf-8"><title>Seite</title>
<style>body{margin:0;font:20px/30px monospace} p,h1,form{margin:10px;font:inherit}
input,textarea{font:inherit}</style></head><body><h1>Überschrift</h1>
<p>Ein Satz mit <a href="#x">einem Verweis</a> darin 😀.</p><p>Noch ein Satz: H<sub>2</sub>O.</p>
<table><tr><td>eins</td><td>zwei</td></tr></table>
<form><input id="name" value="offen" autofocus><input type="password" id="word" value="geheim">
</form></body></html>)";

class BrowserCapture : public testing::Test {
  protected:
    void open(Application (*opener)(DesktopSession&, const QByteArray&),
              const QByteArray& html = page) {
        application = opener(session, html);
        waitForFocusedText(*accessibility, application.process, "");
    }

    [[nodiscard]] QRect window() const { return session.geometry(application.window); }

    // Reads again, after each try to do something to the page, until it is read.
    void expectAfter(const std::function<void()>& action, const QString& expected) {
        QString last;
        try {
            DesktopSession::waitUntil("the selection", [&] {
                action();
                for (int i = 0; i < 10 && last != expected; ++i) {
                    DesktopSession::waitUntil("a moment", [n = 0]() mutable { return ++n > 2; });
                    last = focusedText(*accessibility, application.process);
                }
                return last == expected;
            });
        } catch (const std::runtime_error&) {
            ADD_FAILURE() << "expected \"" << expected.toStdString() << "\", read \""
                          << last.toStdString() << '"';
        }
    }

    [[nodiscard]] CaptureSource source() const {
        return {.accessibility = *accessibility, .process = application.process, .stop = {}};
    }

    // Somewhere without text. Not where the last click was, which would make a double click of it.
    void clickNowhere() {
        m_clicks = (m_clicks + 1) % 5;
        session.click(window().bottomRight() - QPoint(40, 40 + 30 * m_clicks));
    }

    // The next field holds a password, which is selected as a whole.
    void expectPasswordIsHidden() {
        session.key({"Tab", "ctrl+a"});
        AccessibleElementPtr field;
        DesktopSession::waitUntil("the focus of the password", [&] {
            field = accessibility->focusedElement(application.process, {});
            return field && field->size() && !field->value();
        });
        EXPECT_EQ(focusedText(*accessibility, application.process), "");
        EXPECT_EQ(field->selectedText().value_or(""), "");
        EXPECT_EQ(field->boundsForRange({.location = 0, .length = 1}), std::nullopt);
        EXPECT_FALSE(field->setSelectedTextRange({.location = 0, .length = 1}));
        EXPECT_FALSE(field->setSelectedText("anders"));
    }

    DesktopSession session;
    std::unique_ptr<AtSpiAccessibility> accessibility = connected();
    X11PrimarySelection primary;
    Application application;

  private:
    int m_clicks = 0;
};

class FirefoxCapture : public BrowserCapture {
  protected:
    FirefoxCapture() { open(openFirefox); }
};

TEST_F(FirefoxCapture, ReadsAFieldAndNeverAPassword) {
    session.own("clipboard", "of the user");
    expectAfter([&] { session.key({"ctrl+a"}); }, "offen");
    DesktopSession::waitUntil("the bounds of the selection", [&] {
        const auto capture = captureFromFocusedAccessibilityElement(source());
        return capture && capture->rawAXFrame && QRectF(window()).contains(*capture->rawAXFrame);
    });

    expectPasswordIsHidden();
    DesktopSession::waitUntil("nothing to be selected",
                              [&] { return tellsThatNothingIsSelected(source()); });
    EXPECT_EQ(session.selection("clipboard"), "of the user");
}

TEST_F(FirefoxCapture, ReadsASelectionOfSeveralParagraphs) {
    const auto selectAll = [&] {
        clickNowhere();
        session.key({"ctrl+a"});
    };
    // Without what is in the fields.
    expectAfter(selectAll, "Überschrift\n\nEin Satz mit einem Verweis darin 😀.\n\n"
                           "Noch ein Satz: H2O.\n\neins\tzwei");

    expectAfter([&] { clickNowhere(); }, "");
}

class AccessibleChromiumCapture : public BrowserCapture {
  protected:
    AccessibleChromiumCapture() {
        open([](DesktopSession& in, const QByteArray& html) {
            return openChromium(in, html, true);
        });
    }
};

TEST_F(AccessibleChromiumCapture, ReadsAFieldAndNeverAPassword) {
    expectAfter([&] { session.key({"ctrl+a"}); }, "offen");
    expectPasswordIsHidden();
}

class WideChromiumCapture : public BrowserCapture {
  protected:
    WideChromiumCapture() {
        open(
            [](DesktopSession& in, const QByteArray& html) { return openChromium(in, html, true); },
            "<!DOCTYPE html><meta charset=\"utf-8\"><title>Seite</title>"
            "<input value=\"😀😀 offen\" autofocus>");
    }
};

// It tells only a part of such a selection.
TEST_F(WideChromiumCapture, LeavesWideCharactersToPrimary) {
    DesktopSession::waitUntil("the highlight", [&] {
        session.key({"ctrl+a"});
        const auto highlight = primary.highlightOf(application.process, {});
        return highlight && highlight->text == "😀😀 offen";
    });
    for (int read = 0; read < 20; ++read)
        EXPECT_EQ(focusedText(*accessibility, application.process), "");
    EXPECT_EQ(captureFromFocusedAccessibilityElement(source()), std::nullopt);
    EXPECT_FALSE(tellsThatNothingIsSelected(source()));
}

class DarkChromiumCapture : public BrowserCapture {
  protected:
    DarkChromiumCapture() {
        open([](DesktopSession& in, const QByteArray& html) {
            return openChromium(in, html, false);
        });
    }
};

TEST_F(DarkChromiumCapture, HandsOutItsSelectionAsPrimary) {
    session.own("clipboard", "of the user");
    DesktopSession::waitUntil("the highlight", [&] {
        session.key({"ctrl+a"});
        const auto highlight = primary.highlightOf(application.process, {});
        return highlight && highlight->text == "offen";
    });
    EXPECT_EQ(captureSelectedTextFromFocusedElement(source()), "");
    EXPECT_FALSE(tellsThatNothingIsSelected(source()));
    EXPECT_EQ(session.selection("clipboard"), "of the user");
}

} // namespace
} // namespace vorq::desktop
