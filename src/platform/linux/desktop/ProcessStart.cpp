#include "platform/linux/desktop/ProcessStart.h"

#include <QFile>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {

// The name of the program, in brackets, may hold anything.
std::optional<Clock::Duration> startOfThisProcess() {
    constexpr qsizetype placeBehindName = 19;
    QFile file(u"/proc/self/stat"_s);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    const QByteArray stat = file.readAll();
    const QByteArrayList fields = stat.sliced(stat.lastIndexOf(')') + 1).trimmed().split(' ');
    bool isNumber = false;
    const std::int64_t ticks = fields.value(placeBehindName).toLongLong(&isNumber);
    const std::int64_t ticksInSecond = ::sysconf(_SC_CLK_TCK);
    if (!isNumber || ticksInSecond <= 0) return std::nullopt;
    return std::chrono::milliseconds(ticks * 1000 / ticksInSecond);
}

} // namespace vorq
