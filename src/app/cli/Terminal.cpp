#include "app/cli/Terminal.h"

#include "app/cli/ReplyPrinter.h"
#include "capture/attachments/AttachedText.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// A stray byte in the output of a program is replaced, and the rest is worth reading; data that is
// no text at all is full of them.
std::optional<QString> readableText(const QByteArray& bytes) {
    const bool isUtf16 = bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff");
    if (isUtf16) return decodeAttachedText(bytes, false);
    QString text = QString::fromUtf8(bytes);
    const auto isUnreadable = [](QChar character) {
        return character == QChar::ReplacementCharacter ||
               (character < u' ' && !character.isSpace() && character != u'\b' &&
                character != u'\x1b');
    };
    constexpr qsizetype readableToOne = 10;
    if (std::ranges::count_if(text, isUnreadable) * readableToOne > text.size()) return {};
    return text;
}

} // namespace

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
    errno = 0;
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return true;
    if (errno != EPIPE)
        complain(u"The output could not be written: %1."_s.arg(
            QString::fromLocal8Bit(std::strerror(errno))));
    return false;
}

void Terminal::complain(const QString& sentence) {
    showStatus({});
    const QByteArray bytes = withoutTerminalControls(sentence.toUtf8());
    std::fprintf(stderr, "%s\n", bytes.constData());
}

std::expected<QString, QString> readPipedInput(const QString& limit) {
    if (::isatty(STDIN_FILENO) == 1) return QString();
    QFile input;
    if (!input.open(STDIN_FILENO, QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::unexpected(u"Standard input: %1."_s.arg(input.errorString()));
    QByteArray bytes;
    while (bytes.size() <= pipedInputLimit) {
        const QByteArray piece = input.read(1 << 16);
        if (piece.isEmpty()) break;
        bytes += piece;
    }
    if (input.error() != QFileDevice::NoError)
        return std::unexpected(u"Standard input: %1."_s.arg(input.errorString()));
    if (bytes.size() > pipedInputLimit)
        return std::unexpected(
            u"The text on standard input is larger than 16 MB, which is the most "
            "that %1."_s.arg(limit));
    auto text = readableText(bytes);
    if (!text) return std::unexpected(u"Standard input is not a text."_s);
    return *std::move(text);
}

} // namespace vorq
