#include "platform/linux/desktop/XdgUrlOpener.h"

#include "platform/Clock.h"
#include "platform/linux/desktop/ProgramRun.h"
#include "support/async/OnPool.h"
#include "support/async/Wakeup.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

#include <memory>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr Clock::Duration refusalLimit = 3s; // in which xdg-open says that it cannot
constexpr Clock::Duration arrivalLimit = 10s;
constexpr auto queryLimit = 2s;

std::unique_ptr<QProcess> launcherOf(const QUrl& url) {
    auto process = std::make_unique<QProcess>();
    process->setProgram(u"xdg-open"_s);
    process->setArguments({url.toString(QUrl::FullyEncoded)});
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    // What is opened must not end with the terminal that Vorq was started in.
    process->setChildProcessModifier([] { ::setsid(); });
    return process;
}

// "" if it has done its work.
QString launchFailureOf(const QProcess& process) {
    if (process.error() == QProcess::FailedToStart) return u"xdg-open is not installed."_s;
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) return {};
    return u"xdg-open ended with status %1."_s.arg(process.exitCode());
}

// Some forms of it end only with the browser.
void leaveRunning(std::unique_ptr<QProcess> process) {
    QProcess* const running = process.release();
    running->setParent(QCoreApplication::instance());
    QObject::connect(running, &QProcess::finished, running, &QObject::deleteLater);
}

// The desktop-file id, "" if there is none.
QString chosenFor(const QString& scheme) {
    const auto output = outputOf(
        u"xdg-mime"_s, {u"query"_s, u"default"_s, u"x-scheme-handler/"_s + scheme}, queryLimit);
    QString file = QString::fromUtf8(output.value_or(QByteArray())).trimmed();
    if (file.endsWith(".desktop"_L1)) file.chop(8);
    return file;
}

std::optional<RunningApplication> frontmostNamed(const Workspace& workspace,
                                                 const QString& identifier) {
    const std::optional<ProcessId> process = workspace.frontmostProcess();
    auto application = process ? workspace.application(*process) : std::nullopt;
    const bool isIt =
        application && application->identifier.compare(identifier, Qt::CaseInsensitive) == 0;
    return isIt ? application : std::nullopt;
}

} // namespace

QCoro::Task<UrlOpener::Opened> XdgUrlOpener::openInFront(QUrl url, std::stop_token stop) {
    // After a wait this object may be gone, and what it refers to if that was stopped.
    Clock& clock = m_clock;
    Workspace& workspace = m_workspace;
    const QString failure = co_await handOver(clock, url, stop);
    if (!failure.isEmpty()) co_return std::unexpected(failure);
    const QString scheme = url.scheme();
    const auto ask = [scheme] { return chosenFor(scheme); };
    const QString identifier = co_await onPool(ask, stop);
    if (stop.stop_requested() || identifier.isEmpty()) co_return std::nullopt;
    co_return co_await arrival(clock, workspace, identifier, stop);
}

QCoro::Task<QString> XdgUrlOpener::handOver(Clock& clock, QUrl url, std::stop_token stop) {
    std::unique_ptr<QProcess> process = launcherOf(url);
    const Wakeup ended;
    const auto wake = [ended] { ended.fire(); };
    QObject::connect(process.get(), &QProcess::finished, process.get(), wake);
    QObject::connect(process.get(), &QProcess::errorOccurred, process.get(), wake);
    const std::stop_callback onStop(stop, wake);
    const Clock::TimerId timer = clock.after(refusalLimit, wake);
    process->start();
    co_await ended;
    if (!stop.stop_requested()) clock.cancel(timer);
    if (process->state() == QProcess::NotRunning) co_return launchFailureOf(*process);
    leaveRunning(std::move(process));
    co_return QString();
}

QCoro::Task<std::optional<RunningApplication>> XdgUrlOpener::arrival(Clock& clock,
                                                                     Workspace& workspace,
                                                                     QString identifier,
                                                                     std::stop_token stop) {
    if (auto application = frontmostNamed(workspace, identifier)) co_return application;
    const Wakeup arrived;
    const auto wake = [arrived] { arrived.fire(); };
    const QObject waiting;
    QObject::connect(&workspace, &Workspace::frontmostChanged, &waiting,
                     [&workspace, identifier, wake] {
                         if (frontmostNamed(workspace, identifier)) wake();
                     });
    const std::stop_callback onStop(stop, wake);
    const Clock::TimerId timer = clock.after(arrivalLimit, wake);
    co_await arrived;
    if (stop.stop_requested()) co_return std::nullopt;
    clock.cancel(timer);
    co_return frontmostNamed(workspace, identifier);
}

bool XdgUrlOpener::open(const QUrl& url) {
    return QDesktopServices::openUrl(url);
}

} // namespace vorq
