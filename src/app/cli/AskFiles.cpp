#include "app/cli/AskFiles.h"

#include "app/cli/UnixSignals.h"
#include "support/async/TaskSlot.h"

#include <QEventLoop>

namespace vorq {
namespace {

constexpr int interruptedBase = 128;

using AskedFiles = std::expected<QList<PromptAttachment>, AskRefusal>;

QCoro::Task<> readInto(AskedFiles& outcome, const QStringList& files, AttachmentReader& reader,
                       QEventLoop& loop, std::stop_token stop) {
    for (const QString& file : files) {
        AttachmentResult result = co_await reader.read(file, stop);
        if (stop.stop_requested()) break;
        if (!result) {
            outcome = std::unexpected(AskRefusal{1, result.error()});
            break;
        }
        outcome->append(*std::move(result));
    }
    loop.quit();
}

} // namespace

std::expected<QList<PromptAttachment>, AskRefusal> readAskedFiles(const QStringList& files,
                                                                  AttachmentReader& reader) {
    if (files.isEmpty()) return {};
    AskedFiles outcome;
    QEventLoop loop;
    const UnixSignals unixSignals;
    TaskSlot reading;
    // Its end is waited for, so that no converter goes on by itself.
    QObject::connect(&unixSignals, &UnixSignals::received, &loop, [&outcome, &reading](int number) {
        outcome = std::unexpected(AskRefusal{interruptedBase + number, {}});
        reading.cancel();
    });
    reading.restart([&](std::stop_token stop) {
        return readInto(outcome, files, reader, loop, std::move(stop));
    });
    loop.exec();
    return outcome;
}

} // namespace vorq
