#pragma once

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace vorq {

/// The built programs together: a real backend process, real sockets, real files, in a home of
/// their own.
class AskEndToEndTest : public testing::Test {
  protected:
    static constexpr uid_t nobody = 65534;
    static constexpr int patience = 60'000; // milliseconds, for a machine that is busy

    AskEndToEndTest() {
        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert("HOME", m_home.path());
        m_environment.insert("XDG_DATA_HOME", m_home.filePath("data"));
        m_environment.insert("XDG_CONFIG_HOME", m_home.filePath("config"));
        for (const char* name : {"VORQ_PROVIDER_URL", "VORQ_PROVIDER_KEY", "TOLVA_API_BASE_URL"})
            m_environment.remove(name);
    }

    ~AskEndToEndTest() override { stopGateway(); }

    void startGateway(int streamDelay = 0) {
        m_gateway.setProcessEnvironment(m_environment);
        m_gateway.start(VORQ_GATEWAY_PROGRAM,
                        {"serve", "--port", "0", "--stream-delay", QString::number(streamDelay)});
        QByteArray line;
        while (!line.contains('\n') && m_gateway.waitForReadyRead(patience))
            line += m_gateway.readAllStandardOutput();
        const QByteArray url = line.trimmed().split(' ').last();
        ASSERT_THAT(url.toStdString(), testing::StartsWith("http://127.0.0.1:"))
            << line.toStdString();
        m_environment.insert("VORQ_API_BASE_URL", url);
    }

    void stopGateway() {
        m_gateway.terminate();
        m_gateway.waitForFinished(patience);
    }

    struct Outcome {
        int status = -1;
        std::string out;
        std::string err;
    };

    std::unique_ptr<QProcess> start(const QString& program, const QStringList& arguments,
                                    const QByteArray& input = {},
                                    const std::function<void()>& asChild = {}) const {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(m_environment);
        process->setChildProcessModifier(asChild);
        process->start(program, arguments);
        process->write(input);
        // What is written reaches a program only while it is waited for, one at a time.
        while (process->bytesToWrite() > 0 && process->waitForBytesWritten(patience)) {
        }
        process->closeWriteChannel();
        return process;
    }

    static Outcome finish(QProcess& process) {
        EXPECT_TRUE(process.waitForFinished(patience));
        return {process.exitCode(), process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }

    Outcome run(const QString& program, const QStringList& arguments,
                const QByteArray& input = {}) const {
        return finish(*start(program, arguments, input));
    }

    [[nodiscard]] Outcome ask(const QStringList& arguments, const QByteArray& input = {}) const {
        return run(VORQ_PROGRAM, QStringList{"ask"} + arguments, input);
    }

    static void giveToNobody(const QStringList& paths) {
        if (::geteuid() != 0) return;
        for (const QString& path : paths)
            EXPECT_TRUE(::chown(qPrintable(path), nobody, nobody) == 0 || !QFile::exists(path));
    }

    [[nodiscard]] Outcome askAsNobody(const QStringList& arguments, const QByteArray& input) const {
        const auto becomeNobody = [] {
            if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) ::_exit(99);
        };
        return finish(*start(VORQ_PROGRAM, QStringList{"ask"} + arguments, input, becomeNobody));
    }

    void signIn() const {
        const Outcome handoff = run(VORQ_GATEWAY_PROGRAM, {"handoff"});
        const QString url = QString::fromStdString(handoff.out).trimmed();
        ASSERT_TRUE(url.startsWith("vorq://auth/callback?handoff=")) << handoff.err;
        const Outcome opened = run(VORQ_PROGRAM, {"open", url});
        ASSERT_EQ(opened.status, 0) << opened.err;
        ASSERT_THAT(opened.out, testing::StartsWith("Signed in as "));
    }

    static void writeFile(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    // What an access token is after its hour: one that the backend refuses.
    void replaceStoredToken(const QByteArray& token) const {
        const QString path = m_home.filePath("config/Vorq/settings.json");
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QJsonObject settings = QJsonDocument::fromJson(file.readAll()).object();
        settings["vorq.session.token"] = QString::fromUtf8(token);
        writeFile(path, QJsonDocument(settings).toJson());
    }

    // Turns until the process has printed something.
    static QByteArray firstOutput(QProcess& process) {
        EXPECT_TRUE(process.waitForReadyRead(patience));
        return process.readAllStandardOutput();
    }

    // Everything that the program writes when its output is a terminal.
    std::string shownOnTerminal(const QStringList& arguments, const QByteArray& input) const {
        QFile file(m_home.filePath("input"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(input);
        file.close();
        int terminal = -1;
        const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) runInPlace(arguments, file.fileName());
        std::string shown;
        char buffer[4096];
        for (ssize_t count; (count = ::read(terminal, buffer, sizeof buffer)) > 0;)
            shown.append(buffer, static_cast<std::size_t>(count));
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(terminal);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << shown;
        return shown;
    }

    // Becomes the program.
    [[noreturn]] void runInPlace(const QStringList& arguments, const QString& input) const {
        for (const QString& key : m_environment.keys())
            ::setenv(qPrintable(key), qPrintable(m_environment.value(key)), 1);
        if (!std::freopen(qPrintable(input), "r", stdin)) ::_exit(90);
        std::vector<std::string> words = {VORQ_PROGRAM};
        for (const QString& argument : arguments)
            words.push_back(argument.toStdString());
        std::vector<char*> pointers;
        for (std::string& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        ::execv(VORQ_PROGRAM, pointers.data());
        ::_exit(91);
    }

    QTemporaryDir m_home;
    QProcessEnvironment m_environment;
    QProcess m_gateway;
};

} // namespace vorq
