// The backend's pages in a real browser, driven by mouse and keyboard, up to the program that waits
// for its code.

#include "doubles/desktop/AccessibleTree.h"
#include "doubles/desktop/Applications.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr quint16 kCallbackPort = 18742;

/// Stands where the program waits for the browser to come back.
class CallbackListener {
  public:
    CallbackListener() {
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            QTcpSocket* socket = m_server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                m_heard += socket->readAll();
                socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 8\r\n"
                              "Connection: close\r\n\r\nComplete");
                socket->disconnectFromHost();
            });
        });
    }

    [[nodiscard]] bool listen() { return m_server.listen(QHostAddress::LocalHost, kCallbackPort); }
    /// The target of the first request; "" before there is one.
    [[nodiscard]] QString target() const {
        const QList<QByteArray> words = m_heard.split('\n').front().split(' ');
        return words.size() > 1 ? QString::fromUtf8(words[1]) : QString();
    }

  private:
    QTcpServer m_server;
    QByteArray m_heard;
};

class GatewayPagesTest : public testing::Test {
  protected:
    GatewayPagesTest() {
        DesktopProgram& gateway =
            m_session.start(VORQ_GATEWAY_PROGRAM, "", {"serve", "--port", "0"});
        DesktopSession::waitUntil("the backend", [&] { return gateway.output().contains('\n'); });
        const QString line = QString::fromUtf8(gateway.output().split('\n').front());
        m_site = line.sliced(line.indexOf("http"_L1)).trimmed();
    }

    void open(const QString& mode) {
        const Application browser = openChromiumAt(
            m_session,
            m_site + u"/signin.html?mode=%1&client=macos&next=/auth/mac-handoff.html"_s.arg(mode));
        m_page = std::make_unique<AccessibleTree>(browser.process);
    }
    [[nodiscard]] std::optional<AccessibleNode> find(const QString& name,
                                                     const QString& role) const {
        const std::vector<AccessibleNode> nodes = m_page->read();
        const auto node = std::ranges::find_if(nodes, [&](const AccessibleNode& each) {
            return each.name == name && each.role == role && each.isShowing;
        });
        return node == nodes.end() ? std::nullopt : std::optional(*node);
    }
    void click(const QString& name, const QString& role) const {
        QRect place;
        DesktopSession::waitUntil(name, [&] {
            const auto node = find(name, role);
            place = node ? m_page->place(*node) : QRect();
            return !place.isEmpty();
        });
        m_session.click(place.center());
    }
    void fill(const QString& field, const QString& role, const QString& text) const {
        click(field, role);
        DesktopSession::waitUntil("the caret in " + field, [&] {
            const auto node = find(field, role);
            return node && node->isFocused;
        });
        m_session.type(text);
    }
    void fillIn(const QString& email, const QString& password) const {
        fill("Email address", "entry", email);
        fill("Password", "password text", password);
    }
    [[nodiscard]] QString awaitedTarget() const {
        DesktopSession::waitUntil("the browser to come back",
                                  [this] { return !m_listener.target().isEmpty(); });
        return m_listener.target();
    }
    /// What the backend gives for the code: whose it is.
    [[nodiscard]] QString ownerOf(const QString& target) const {
        const QString code = target.sliced(target.indexOf('=') + 1);
        QNetworkRequest request(QUrl(m_site + "/auth/mac-handoff/exchange"));
        request.setHeader(QNetworkRequest::ContentTypeHeader, "application/json");
        QNetworkAccessManager network;
        QNetworkReply* reply =
            network.post(request, QJsonDocument(QJsonObject{{"code", code}}).toJson());
        DesktopSession::waitUntil("the session", [&] { return reply->isFinished(); });
        return QJsonDocument::fromJson(reply->readAll()).object().value("email"_L1).toString();
    }

    DesktopSession m_session;
    CallbackListener m_listener;
    QString m_site;
    std::unique_ptr<AccessibleTree> m_page;
};

TEST_F(GatewayPagesTest, SignUpWithTheMouseEndsAtTheProgram) {
    ASSERT_TRUE(m_listener.listen());
    open("sign-up");
    fillIn("ada@example.org", "open sesame");
    click("Create account", "push button");
    const QString target = awaitedTarget();
    EXPECT_THAT(target.toStdString(), StartsWith("/callback?handoff="));
    EXPECT_EQ(ownerOf(target), "ada@example.org");
}

TEST_F(GatewayPagesTest, SignUpByKeyboardAloneEndsAtTheProgram) {
    ASSERT_TRUE(m_listener.listen());
    open("sign-up");
    DesktopSession::waitUntil("the page",
                              [this] { return find("Password", "password text").has_value(); });
    m_session.key({"Tab"});
    m_session.type("eve@example.org");
    m_session.key({"Tab"});
    m_session.type("open sesame");
    m_session.key({"Return"});
    EXPECT_EQ(ownerOf(awaitedTarget()), "eve@example.org");
}

TEST_F(GatewayPagesTest, ThisComputersUserContinuesWithOnePress) {
    ASSERT_TRUE(m_listener.listen());
    open("sign-in");
    click("Continue on this computer", "push button");
    EXPECT_THAT(ownerOf(awaitedTarget()).toStdString(), HasSubstr("@localhost"));
}

TEST_F(GatewayPagesTest, CancelTellsTheProgram) {
    ASSERT_TRUE(m_listener.listen());
    open("sign-in");
    click("Cancel", "push button");
    EXPECT_EQ(awaitedTarget(),
              "/callback?error=access_denied&error_description=Sign-in+was+cancelled.");
}

TEST_F(GatewayPagesTest, AWrongPasswordIsToldBesideItsField) {
    open("sign-in");
    fillIn("ada@example.org", "no such password");
    click("Sign in", "push button");
    DesktopSession::waitUntil("the problem beside the field that has the keyboard", [this] {
        const auto field = find("Password", "password text");
        return field && field->isFocused &&
               find("The email address or the password is not right.", "static").has_value();
    });
}

TEST_F(GatewayPagesTest, WithoutAProgramThatWaitsThePageLinksToIt) {
    open("sign-in");
    click("Continue on this computer", "push button");
    DesktopSession::waitUntil("the link", [this] { return find("Open Vorq", "link").has_value(); });
}

} // namespace
} // namespace vorq::desktop
