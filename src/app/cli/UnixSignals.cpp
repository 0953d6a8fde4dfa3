#include "app/cli/UnixSignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace vorq {
namespace {

constexpr std::array handledSignals = {SIGINT, SIGTERM, SIGHUP};

// Written by the handler, which may use nothing else.
int writeEnd = -1;

int openPipe() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return -1;
    writeEnd = ends[1];
    return ends[0];
}

// As nohup(1) or a shell has it for what is to go on by itself.
bool isIgnored(int number) {
    struct sigaction current{};
    return ::sigaction(number, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

void handle(int number) {
    const int savedErrno = errno;
    const auto byte = static_cast<char>(number);
    [[maybe_unused]] const auto written = ::write(writeEnd, &byte, 1);
    ::signal(number, SIG_DFL);
    errno = savedErrno;
}

} // namespace

UnixSignals::UnixSignals() : m_notifier(openPipe(), QSocketNotifier::Read) {
    connect(&m_notifier, &QSocketNotifier::activated, this, &UnixSignals::take);
    for (const int number : handledSignals)
        if (!isIgnored(number)) ::signal(number, handle);
}

UnixSignals::~UnixSignals() {
    for (const int number : handledSignals)
        if (!isIgnored(number)) ::signal(number, SIG_DFL);
    ::close(writeEnd);
    ::close(static_cast<int>(m_notifier.socket()));
    writeEnd = -1;
}

void UnixSignals::take() {
    char number = 0;
    if (::read(static_cast<int>(m_notifier.socket()), &number, 1) == 1) emit received(number);
}

} // namespace vorq
