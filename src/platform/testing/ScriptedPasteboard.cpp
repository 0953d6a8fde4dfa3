#include "platform/testing/ScriptedPasteboard.h"

#include "support/async/Wakeup.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

QCoro::Task<> untilStopped(std::stop_token stop) {
    const Wakeup stopped;
    const std::stop_callback onStop(stop, [stopped] { stopped.fire(); });
    co_await stopped;
}

} // namespace

QCoro::Task<Pasteboard::Contents> ScriptedPasteboard::contents(std::stop_token stop) {
    if (hangs) co_await untilStopped(stop);
    Contents given = held;
    if (refusal) given = std::unexpected(*refusal);
    if (stop.stop_requested()) given = std::unexpected(u"not in time"_s);
    co_return given;
}

QCoro::Task<QString> ScriptedPasteboard::text(std::stop_token stop) {
    if (hangs) co_await untilStopped(stop);
    QString given;
    const auto found = std::ranges::find(held, QByteArray("UTF8_STRING"), &PasteboardForm::name);
    if (!stop.stop_requested() && found != held.end()) given = QString::fromUtf8(found->bytes);
    co_return given;
}

QCoro::Task<std::optional<QList<QByteArray>>> ScriptedPasteboard::formNames(std::stop_token stop) {
    if (hangs) co_await untilStopped(stop);
    std::optional<QList<QByteArray>> names;
    if (!stop.stop_requested()) {
        names.emplace();
        for (const PasteboardForm& form : held)
            *names += form.name;
    }
    co_return names;
}

QCoro::Task<std::optional<QByteArray>> ScriptedPasteboard::form(QByteArray name,
                                                                std::stop_token stop) {
    if (hangs || name == hangingForm) co_await untilStopped(stop);
    std::optional<QByteArray> given;
    const auto found = std::ranges::find(held, name, &PasteboardForm::name);
    if (!stop.stop_requested() && found != held.end()) given = found->bytes;
    co_return given;
}

QCoro::Task<std::optional<std::uint64_t>> ScriptedPasteboard::write(PasteboardContents contents,
                                                                    std::uint64_t over) {
    if (onWrite) onWrite();
    std::optional<std::uint64_t> count;
    if (m_change.count == over) {
        written.push_back(contents);
        writeAs(static_cast<ProcessId>(QCoreApplication::applicationPid()), std::move(contents));
        count = m_change.count;
    }
    co_return count;
}

} // namespace vorq
