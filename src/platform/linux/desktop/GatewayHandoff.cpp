#include "platform/linux/desktop/GatewayHandoff.h"

#include "platform/Clock.h"
#include "support/async/Wakeup.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr Clock::Duration handoffLimit = 10s;
const QString gatewayProgram = u"vorq-gateway"_s;

// "" if there is none.
QString gatewayPath() {
    const QFileInfo beside(QDir(QCoreApplication::applicationDirPath()), gatewayProgram);
    return beside.isExecutable() ? beside.absoluteFilePath()
                                 : QStandardPaths::findExecutable(gatewayProgram);
}

std::expected<QUrl, QString> outcomeOf(QProcess& process) {
    const bool isDone = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    QUrl url(QString::fromUtf8(process.readAllStandardOutput()).trimmed());
    if (isDone && url.isValid()) return url;
    const QString words = QString::fromUtf8(process.readAllStandardError()).trimmed();
    return std::unexpected(words.isEmpty() ? QCoreApplication::translate(
                                                 "GatewayHandoff", "vorq-gateway gave no account.")
                                           : words);
}

// A process object waits for its process when it goes, so it goes after that.
void endWithoutWaiting(std::unique_ptr<QProcess> process) {
    QProcess* const ending = process.release();
    ending->setParent(QCoreApplication::instance());
    QObject::connect(ending, &QProcess::finished, ending, &QObject::deleteLater);
    ending->kill();
}

} // namespace

QCoro::Task<std::expected<QUrl, QString>> GatewayHandoff::handoff(std::stop_token stop) {
    const QString path = gatewayPath();
    if (path.isEmpty())
        co_return std::unexpected(QCoreApplication::translate(
            "GatewayHandoff", "vorq-gateway, the backend for this computer, is "
                              "not installed."));
    // After the wait this object may be gone.
    Clock& clock = m_clock;
    auto process = std::make_unique<QProcess>();
    const Wakeup ended;
    const auto wake = [ended] { ended.fire(); };
    QObject::connect(process.get(), &QProcess::finished, process.get(), wake);
    QObject::connect(process.get(), &QProcess::errorOccurred, process.get(), wake);
    const std::stop_callback onStop(stop, wake);
    const Clock::TimerId timer = clock.after(handoffLimit, wake);
    process->start(path, {u"handoff"_s}, QIODevice::ReadOnly);
    co_await ended;
    if (!stop.stop_requested()) clock.cancel(timer);
    if (process->state() == QProcess::NotRunning) co_return outcomeOf(*process);
    endWithoutWaiting(std::move(process));
    co_return std::unexpected(
        QCoreApplication::translate("GatewayHandoff", "vorq-gateway did not answer."));
}

} // namespace vorq
