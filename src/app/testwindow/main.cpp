// Shows the window that Vorq tests itself on, as another application would. It is told what to do
// on standard input, line by line, and ends with that.

#include "app/testwindow/TestWindowWidget.h"

#include <QApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <array>
#include <chrono>
#include <cstdio>
#include <unistd.h>

namespace vorq {
namespace {

// Whoever started it has ended it long before, unless it was killed.
constexpr std::chrono::minutes longestLife{2};
constexpr qsizetype longestLine = 64 * 1024;

void tell(const QByteArray& line) {
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

QString textIn(const QByteArray& base64) {
    return QString::fromUtf8(QByteArray::fromBase64(base64));
}

void obey(const QByteArray& line, TestWindowWidget& window) {
    const QList<QByteArray> words = line.split(' ');
    const QByteArray& verb = words.front();
    if ((verb == "show" || verb == "offer") && words.size() == 2)
        window.show(textIn(words[1]), verb == "offer");
    else if (verb == "highlight" && words.size() == 3)
        window.highlight(words[1].toInt(), words[2].toInt());
    else if (verb == "text")
        tell("text " + window.text().toUtf8().toBase64());
}

// False at the end of the input.
bool readInput(QByteArray& unread, TestWindowWidget& window) {
    std::array<char, 4096> bytes{};
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0 || unread.size() > longestLine) return false;
    unread.append(bytes.data(), count);
    for (qsizetype end = unread.indexOf('\n'); end >= 0; end = unread.indexOf('\n')) {
        obey(unread.first(end), window);
        unread.remove(0, end + 1);
    }
    return true;
}

int run(int argc, char** argv) {
    QApplication application(argc, argv);
    // Known by another name than Vorq, which leaves itself alone.
    QCoreApplication::setApplicationName(QStringLiteral("vorq-test-window"));
    TestWindowWidget window;
    QObject::connect(&window, &TestWindowWidget::shown, [] { tell("shown"); });
    QByteArray unread;
    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &window, [&] {
        if (!readInput(unread, window)) QCoreApplication::quit();
    });
    QTimer::singleShot(longestLife, &application, &QCoreApplication::quit);
    return QApplication::exec();
}

} // namespace
} // namespace vorq

int main(int argc, char** argv) {
    return vorq::run(argc, argv);
}
