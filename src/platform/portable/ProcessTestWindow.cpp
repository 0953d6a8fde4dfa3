#include "platform/portable/ProcessTestWindow.h"

#include <QCoreApplication>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// A text of a few words takes less; whoever sends more is no window of ours.
constexpr qsizetype longestLine = qsizetype{64} * 1024;

} // namespace

// The process is killed and waited for.
ProcessTestWindow::~ProcessTestWindow() {
    if (m_process) m_process->disconnect();
}

void ProcessTestWindow::wake(const std::shared_ptr<Told>& told) {
    for (const Wakeup& waiting : std::exchange(told->waiting, {}))
        waiting.fire();
}

QCoro::Task<> ProcessTestWindow::nextNews(std::shared_ptr<Told> told, std::stop_token stop) {
    const Wakeup news;
    told->waiting.push_back(news);
    const std::stop_callback onStop(std::move(stop), [news] { news.fire(); });
    co_await news;
}

void ProcessTestWindow::read(QProcess& process, const std::shared_ptr<Told>& told) {
    told->unread += process.readAllStandardOutput();
    for (qsizetype end = told->unread.indexOf('\n'); end >= 0; end = told->unread.indexOf('\n')) {
        const QByteArray line = told->unread.first(end);
        told->unread.remove(0, end + 1);
        if (line == "shown") told->isShown = true;
        if (line.startsWith("text "))
            told->text = QString::fromUtf8(QByteArray::fromBase64(line.sliced(5)));
    }
    if (told->unread.size() > longestLine) told->unread.clear();
    wake(told);
}

QCoro::Task<TestWindow::Opened> ProcessTestWindow::open(QString text, HandsOut handsOut,
                                                        std::stop_token stop) {
    close();
    const auto told = m_told = std::make_shared<Told>();
    m_process = std::make_unique<QProcess>();
    QProcess* process = m_process.get();
    QObject::connect(process, &QProcess::readyReadStandardOutput, process,
                     [process, told] { read(*process, told); });
    const auto end = [told] {
        told->hasEnded = true;
        wake(told);
    };
    QObject::connect(process, &QProcess::finished, process, end);
    QObject::connect(process, &QProcess::errorOccurred, process, end);
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(m_program, QStringList());
    tell((handsOut == HandsOut::Yes ? "offer " : "show ") + text.toUtf8().toBase64());
    while (!told->isShown && !told->hasEnded && !stop.stop_requested())
        co_await nextNews(told, stop);
    Opened opened = std::unexpected(u"The window did not open."_s);
    // Another one may have taken its place meanwhile.
    if (told->isShown && !told->hasEnded && told == m_told)
        opened = static_cast<ProcessId>(m_process->processId());
    co_return opened;
}

void ProcessTestWindow::highlight(TextRange range) {
    tell("highlight " + QByteArray::number(qlonglong(range.location)) + ' ' +
         QByteArray::number(qlonglong(range.length)));
}

QCoro::Task<std::optional<QString>> ProcessTestWindow::text(std::stop_token stop) {
    const auto told = m_told;
    std::optional<QString> result;
    if (!told) co_return result;
    told->text.reset();
    tell("text");
    while (!told->text && !told->hasEnded && !stop.stop_requested())
        co_await nextNews(told, stop);
    result = told->text;
    co_return result;
}

void ProcessTestWindow::tell(const QByteArray& line) {
    if (m_process && m_process->state() != QProcess::NotRunning) m_process->write(line + '\n');
}

// It keeps nothing that could be lost, and may hang.
void ProcessTestWindow::close() {
    if (!m_process) return;
    m_told->hasEnded = true;
    wake(m_told);
    QProcess* process = m_process.release();
    process->disconnect();
    if (process->state() == QProcess::NotRunning) return process->deleteLater();
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    // The program may end before that.
    process->setParent(QCoreApplication::instance());
    process->kill();
}

} // namespace vorq
