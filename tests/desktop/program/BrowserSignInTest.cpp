// From a press in the menu or the panel, through a real browser and a scripted website, to signed
// in.

#include "doubles/backend/ScriptedHttpServer.h"
#include "doubles/desktop/Applications.h"
#include "doubles/desktop/MenuProgram.h"
#include "doubles/desktop/PanelProgram.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpServer>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QByteArray loopback = "http://127.0.0.1:18742/callback";
constexpr quint16 loopbackPort = 18742;

/// The website of the backend: holds its sign-in page back until it is told what becomes of it.
class Website {
  public:
    Website() {
        m_server.onRequest([this](std::size_t connection) { answer(connection); });
    }

    [[nodiscard]] QString url() const { return m_server.url(); }
    [[nodiscard]] bool isAsked() const { return m_waiting.has_value(); }
    /// The addresses of the sign-in pages that were asked for.
    [[nodiscard]] const QStringList& pages() const { return m_pages; }
    /// The codes that were to be exchanged for a session.
    [[nodiscard]] const QStringList& codes() const { return m_codes; }

    /// Sends the browser that waits for its page elsewhere, or shows it a page of HTML.
    void redirect(const QByteArray& address) { send("302", "", address); }
    void show(const QByteArray& html) { send("200", html, {}); }
    /// The browser that waits for its page is gone.
    void forget() { m_waiting.reset(); }

  private:
    void send(const QByteArray& status, const QByteArray& html, const QByteArray& address) {
        const std::size_t connection = std::exchange(m_waiting, std::nullopt).value();
        QByteArray lines = "Content-Type: text/html\r\nConnection: close\r\n";
        if (!address.isEmpty()) lines += "Location: " + address + "\r\n";
        m_server.send(connection, ScriptedHttpServer::response(status.toInt(), html, lines));
        m_server.close(connection);
    }
    void answer(std::size_t connection) {
        const QByteArray request = m_server.received(connection);
        const QByteArray path = request.split(' ').value(1);
        if (path.startsWith("/signin.html")) {
            m_pages += QString::fromUtf8(path);
            m_waiting = connection;
            return;
        }
        QByteArray body = "{}";
        int status = 404;
        if (path == "/auth/mac-handoff/exchange") {
            const QByteArray sent = request.sliced(request.indexOf("\r\n\r\n") + 4);
            m_codes += QJsonDocument::fromJson(sent).object()["code"].toString();
            body = R"({"signedIn":true,"email":"ada@example.org","token":"t1","firstName":"Ada"})";
            status = 200;
        } else if (path == "/go") {
            status = 302;
        }
        m_server.send(connection, ScriptedHttpServer::response(status, body,
                                                               "Connection: close\r\nLocation: " +
                                                                   loopback + "?handoff=good\r\n"));
        m_server.close(connection);
    }

    ScriptedHttpServer m_server;
    std::optional<std::size_t> m_waiting;
    QStringList m_pages;
    QStringList m_codes;
};

[[nodiscard]] bool isPortFree() {
    QTcpServer server;
    return server.listen(QHostAddress::LocalHost, loopbackPort);
}

class BrowserSignInTest : public MenuProgramTest {
  protected:
    void SetUp() override { ASSERT_TRUE(isPortFree()) << "another program has port 18742"; }

    DesktopProgram& startSignedOut(const QString& backend) {
        QProcessEnvironment environment;
        environment.insert("VORQ_API_BASE_URL", backend);
        return startInTray("{}", environment);
    }
    DesktopProgram& startSignedOut() {
        makeChromiumDefault(m_session);
        return startSignedOut(m_website.url());
    }
    void chooseInMenu(const QString& entry) {
        openMenu(entry);
        choose(entry);
    }
    void openPanel() {
        chooseInMenu("Toggle Vorq");
        DesktopSession::waitUntil("the notice", [this] { return shows("You are not signed in."); });
    }
    DesktopSession::Window waitForBrowser() {
        const Application chromium = inFront(m_session, "chromium");
        DesktopSession::waitUntil(
            "the sign-in page", [this] { return m_website.isAsked(); }, std::chrono::seconds(60));
        return chromium.window;
    }
    void waitForSession() {
        DesktopSession::waitUntil("the exchange", [this] { return !m_website.codes().isEmpty(); });
        EXPECT_THAT(m_website.codes(), ElementsAre("good"));
    }
    void waitForHidden(DesktopSession::Window browser) const {
        DesktopSession::waitUntil("the browser to go", [&] { return !m_session.isShown(browser); });
    }
    void waitForText(const QString& text) const {
        DesktopSession::waitUntil(text, [&] { return shows(text); });
    }

    void waitForMenuByItself(const QString& account) {
        DesktopSession::waitUntil("the menu by itself", [&] {
            m_session.key({"Down"});
            return entry(account).has_value();
        });
    }
    // With the mouse, on the page of the browser, once that stands still.
    void pressInPage(const Application& browser, const QString& button) const {
        const AccessibleTree page(browser.process);
        QRect last;
        DesktopSession::waitUntil(
            button,
            [&] {
                QRect place;
                for (const AccessibleNode& node : page.read())
                    if (node.name == button && node.isShowing) place = page.place(node);
                return !place.isEmpty() && std::exchange(last, place) == place;
            },
            std::chrono::seconds(60));
        m_session.click(last.center());
    }
    [[nodiscard]] Application openThePageOfTheGateway(const QString& browserClass) {
        startSignedOut("http://127.0.0.1:" + QString::number(startGateway(m_session)));
        chooseInMenu("Sign in");
        return inFront(m_session, browserClass);
    }
    void signInThroughTheGateway(const QString& browserClass) {
        const Application browser = openThePageOfTheGateway(browserClass);
        pressInPage(browser, "Continue on this computer");
        waitForHidden(browser.window);
        waitForMenuByItself("Signed in as ");
    }

    Website m_website;
};

TEST_F(BrowserSignInTest, ThroughTheGatewayInChromium) {
    makeChromiumDefault(m_session);
    signInThroughTheGateway("chromium");
}

TEST_F(BrowserSignInTest, ThroughTheGatewayInFirefox) {
    makeFirefoxDefault(m_session);
    signInThroughTheGateway("firefox");
}

TEST_F(BrowserSignInTest, WhoCancelsOnThePageOfTheGatewayStaysSignedOut) {
    makeChromiumDefault(m_session);
    const Application browser = openThePageOfTheGateway("chromium");
    pressInPage(browser, "Cancel");
    DesktopSession::waitUntil("the end of the attempt", [] { return isPortFree(); });
    openMenu("Sign-in was cancelled.");
    EXPECT_TRUE(entry("Sign in")->isEnabled);
}

TEST_F(BrowserSignInTest, FromTheMenuToSignedIn) {
    startSignedOut();
    chooseInMenu("Sign in");
    const DesktopSession::Window browser = waitForBrowser();
    EXPECT_THAT(m_website.pages(),
                ElementsAre("/signin.html?mode=sign-in&client=macos&next=/auth/mac-handoff.html"));
    openMenu("Waiting for browser…");
    EXPECT_FALSE(entry("Waiting for browser…")->isEnabled);
    (void)keep("sign-in-waiting");
    closeMenu();
    m_website.redirect(loopback + "?handoff=good");
    waitForSession();
    waitForHidden(browser);
    waitForMenuByItself("Signed in as Ada");
    EXPECT_FALSE(entry("Sign in"));
    (void)keep("sign-in-done");
}

TEST_F(BrowserSignInTest, FromThePanelToSignedIn) {
    startSignedOut();
    openPanel();
    press("Sign in");
    waitForText("Waiting for browser…");
    (void)keep("sign-in-panel");
    const DesktopSession::Window browser = waitForBrowser();
    m_website.redirect(loopback + "?handoff=good");
    waitForSession();
    waitForHidden(browser);
    DesktopSession::waitUntil("the notice to go",
                              [this] { return !shows("You are not signed in."); });
}

TEST_F(BrowserSignInTest, WhatTheWebsiteRefusedIsTold) {
    startSignedOut();
    openPanel();
    press("Sign in");
    const DesktopSession::Window browser = waitForBrowser();
    m_website.redirect(loopback + "?error_description=You+said+no.&handoff=good");
    waitForText("You said no.");
    EXPECT_TRUE(m_session.isShown(browser)) << "the user may try again in it";
    EXPECT_THAT(m_website.codes(), IsEmpty());
    openMenu("You said no.");
    EXPECT_TRUE(entry("Sign in")->isEnabled);
    (void)keep("sign-in-refused");
}

TEST_F(BrowserSignInTest, ABrowserThatWasClosedHalfWayCanBeGivenUp) {
    startSignedOut();
    openPanel();
    press("Sign in");
    m_session.activate(waitForBrowser());
    m_session.key({"ctrl+shift+w"});
    m_session.waitForNoWindow("chromium");
    m_website.forget();
    waitForText("Waiting for browser…");
    press("Cancel");
    DesktopSession::waitUntil("the end of the attempt",
                              [this] { return !shows("Waiting for browser…"); });
    EXPECT_TRUE(isPortFree());
    press("Sign in");
    (void)waitForBrowser();
    m_website.redirect(loopback + "?handoff=good");
    waitForSession();
}

TEST_F(BrowserSignInTest, WhileThePortIsTakenNoBrowserOpens) {
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost, loopbackPort));
    startSignedOut();
    openPanel();
    press("Sign in");
    waitForText("Another program uses port 18742, which sign-in needs.");
    EXPECT_THAT(m_website.pages(), IsEmpty());
}

TEST_F(BrowserSignInTest, TheEndOfTheProgramEndsIt) {
    DesktopProgram& vorq = startSignedOut();
    chooseInMenu("Sign in");
    (void)waitForBrowser();
    EXPECT_EQ(runToEnd({"quit"}).status, 0);
    DesktopSession::waitUntil("the end", [&] { return !vorq.isRunning(); });
    EXPECT_TRUE(isPortFree());
}

// By everything that a page can send without leaving its window.
const QByteArray hostilePage = R"(<!DOCTYPE html><title>Hostile</title>
<img id="i"><iframe id="f" name="inner"></iframe>
<form id="p" method="post" target="inner" action="http://127.0.0.1:18742/callback?handoff=posted">
</form><script>
const evil = name => 'http://127.0.0.1:18742/callback?handoff=' + name
const settled = element => new Promise(done => { element.onload = element.onerror = done })
;(async () => {
  await fetch(evil('cors')).catch(() => {})
  await fetch(evil('blind'), {mode: 'no-cors'}).catch(() => {})
  await fetch(evil('sent'), {method: 'POST', mode: 'no-cors', body: 'x'}).catch(() => {})
  i.src = evil('pictured'); await settled(i)
  f.src = evil('framed'); await settled(f)
  p.submit(); await settled(f)
  location = '/go'
})()
</script>)";

TEST_F(BrowserSignInTest, AHostilePageHandsNoSessionIn) {
    startSignedOut();
    chooseInMenu("Sign in");
    (void)waitForBrowser();
    m_website.show(hostilePage);
    waitForSession();
}

} // namespace
} // namespace vorq::desktop
