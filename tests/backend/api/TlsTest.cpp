#include "backend/api/VorqAPIService.h"
#include "backend/http/CurlTransport.h"
#include "doubles/backend/Awaiting.h"
#include "doubles/backend/ScriptedHttpServer.h"
#include "platform/testing/ManualClock.h"

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <memory>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

class TlsTest : public testing::Test {
  protected:
    // A key and a certificate for "localhost" that nobody else trusts, fresh for each run.
    static void SetUpTestSuite() {
        folder = std::make_unique<QTemporaryDir>();
        QProcess openssl;
        openssl.start(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
                                     u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s, u"-days"_s,
                                     u"2"_s, u"-subj"_s, u"/CN=localhost"_s, u"-addext"_s,
                                     u"subjectAltName=DNS:localhost,IP:127.0.0.1"_s, u"-keyout"_s,
                                     folder->filePath(u"key.pem"_s), u"-out"_s,
                                     folder->filePath(u"certificate.pem"_s)});
        ASSERT_TRUE(openssl.waitForFinished() && openssl.exitCode() == 0)
            << "the package openssl is missing, or failed: "
            << openssl.readAllStandardError().toStdString();
    }
    static void TearDownTestSuite() { folder.reset(); }

    static QByteArray contentOf(const QString& name) {
        QFile file(folder->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void SetUp() override {
        ASSERT_TRUE(QSslSocket::supportsSsl());
        QSslConfiguration configuration;
        configuration.setPrivateKey(QSslKey(contentOf(u"key.pem"_s), QSsl::Ec));
        configuration.setLocalCertificate(QSslCertificate(contentOf(u"certificate.pem"_s)));
        server.setSslConfiguration(configuration);
        QObject::connect(&server, &QTcpServer::pendingConnectionAvailable, &server, [this] {
            QTcpSocket* const socket = server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                ++requests;
                socket->write(answer);
                socket->disconnectFromHost();
            });
        });
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    }
    static void trust() {
        qputenv("SSL_CERT_FILE", folder->filePath(u"certificate.pem"_s).toUtf8());
    }
    void TearDown() override { qunsetenv("SSL_CERT_FILE"); }

    static inline std::unique_ptr<QTemporaryDir> folder;
    QSslServer server;
    QByteArray answer =
        ScriptedHttpServer::response(200, R"({"signedIn":true,"email":"e","token":"t"})");
    int requests = 0;
    QString host = u"localhost"_s;
    ManualClock clock;
    CurlTransport transport{clock};
    VorqAPIService service{
        transport, [this] { return u"https://%1:%2"_s.arg(host).arg(server.serverPort()); }};
};

TEST_F(TlsTest, SpeaksToAServerItTrusts) {
    trust();
    const Outcome outcome(service.refreshSession("r", {}));
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.message(), u"");
    ASSERT_TRUE(outcome.succeeded());
    EXPECT_EQ(outcome.value().token, u"t");
}

TEST_F(TlsTest, SaysNothingToAServerItDoesNotTrust) {
    const Outcome outcome(service.refreshSession("r", {}));
    ASSERT_TRUE(outcome.wait());
    EXPECT_TRUE(outcome.message().startsWith(u"Could not reach Vorq at https://localhost:"));
    EXPECT_EQ(requests, 0);
}

TEST_F(TlsTest, ACertificateForAnotherNameIsNotTrusted) {
    trust();
    host = u"vorq.localhost"_s;
    const Outcome outcome(service.refreshSession("r", {}));
    ASSERT_TRUE(outcome.wait());
    EXPECT_TRUE(outcome.message().startsWith(u"Could not reach Vorq at https://vorq.localhost:"));
    EXPECT_EQ(requests, 0);
}

// Bytes that the library holds back while it is paused come with no event of the socket.
TEST_F(TlsTest, AStreamReadSlowlyComesWhole) {
    trust();
    constexpr int events = 400;
    const QByteArray filler(20'000, 'x');
    answer = ScriptedHttpServer::head(200, "");
    for (int i = 0; i < events; ++i)
        answer += "data: {\"text\":\"" + QByteArray::number(i) + ' ' + filler + "\"}\n\n";
    int deltas = 0;
    const Outcome outcome(
        service.streamAnalysis(u"/ai/prompt"_s, "{}", u"t"_s, std::chrono::seconds(60),
                               [&deltas](const QString& text) {
                                   EXPECT_TRUE(text.startsWith(QString::number(deltas) + u' '));
                                   if (++deltas < 100) QThread::usleep(500);
                               },
                               {}));
    ASSERT_TRUE(outcome.wait());
    EXPECT_EQ(outcome.message(), u"");
    EXPECT_EQ(deltas, events);
}

} // namespace
} // namespace vorq
