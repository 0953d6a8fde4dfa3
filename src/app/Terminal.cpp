#include "app/Terminal.h"

#include "app/ReplyPrinter.h"

#include <QFile>

#include <cstdio>
#include <unistd.h>

namespace vorq {

Terminal::Terminal() : m_isInteractive(::isatty(STDOUT_FILENO) == 1) {}

Terminal::~Terminal() {
    showStatus({});
}

void Terminal::showStatus(const QString& text) {
    if (!m_isInteractive || (text.isEmpty() && !m_hasStatus)) return;
    // To the start of the line, and clear it.
    std::fprintf(stdout, "\r\033[2K%s", qPrintable(text));
    std::fflush(stdout);
    m_hasStatus = !text.isEmpty();
}

bool Terminal::print(const QByteArray& utf8) {
    if (utf8.isEmpty()) return true;
    showStatus({});
    const QByteArray bytes = m_isInteractive ? withoutTerminalControls(utf8) : utf8;
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0;
}

void Terminal::complain(const QString& sentence) {
    showStatus({});
    const QByteArray bytes = withoutTerminalControls(sentence.toUtf8());
    std::fprintf(stderr, "%s\n", bytes.constData());
}

QString readPipedInput() {
    if (::isatty(STDIN_FILENO) == 1) return {};
    QFile input;
    if (!input.open(STDIN_FILENO, QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(input.readAll());
}

} // namespace vorq
