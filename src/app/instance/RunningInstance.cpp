#include "app/instance/RunningInstance.h"

#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QThread>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr unsigned long goneInterval = 10; // milliseconds

const QString noAnswer = u"Vorq is running, but does not answer."_s;

QString sentenceOf(const QDBusMessage& error) {
    if (error.errorName() == LinkOutcomes::failed) return error.errorMessage();
    if (error.errorName() == u"org.freedesktop.DBus.Error.NoReply") return noAnswer;
    return u"The Vorq that runs did not take it: %1"_s.arg(error.errorMessage());
}

} // namespace

bool RunningInstance::exists() const {
    if (!m_bus.isConnected()) return false;
    const QDBusReply<bool> reply = m_bus.interface()->isServiceRegistered(ApplicationService::name);
    return reply.isValid() && reply.value();
}

RunningInstance::Outcome RunningInstance::handOver(const DesktopArguments& arguments,
                                                   const VerbSource& source) {
    if (!arguments.url.isEmpty()) return open(arguments.url);
    if (arguments.verb == Verb::Quit) return quit();
    if (arguments.verb != Verb::Launch) {
        QVariantMap data;
        if (source.process) data.insert(ApplicationService::sourceProcessKey, *source.process);
        if (source.given)
            data.insert(ApplicationService::givenKey,
                        qlonglong(floor<std::chrono::milliseconds>(*source.given).count()));
        return call(u"ActivateAction"_s, {nameOf(arguments.verb), QVariantList(), data});
    }
    if (arguments.background || arguments.launchedAtLogin) return {};
    return call(u"Activate"_s, {QVariantMap()});
}

RunningInstance::Outcome RunningInstance::open(const QString& url) {
    return call(u"Open"_s, {QStringList{url}, QVariantMap()});
}

// Waits until the name is free, so that a start that follows is not handed to the dying program.
RunningInstance::Outcome RunningInstance::quit() {
    QElapsedTimer timer;
    timer.start();
    const QVariantList arguments{nameOf(Verb::Quit), QVariantList(), QVariantMap()};
    const Outcome outcome = call(u"ActivateAction"_s, arguments);
    while (outcome && exists()) {
        if (timer.hasExpired(limit.count()))
            return std::unexpected(
                u"Vorq has not ended yet. It may ask about what is not saved."_s);
        QThread::msleep(goneInterval);
    }
    return outcome;
}

std::expected<QString, QString> RunningInstance::outcomeOf(const QString& url) {
    const QDBusMessage reply = ask(LinkOutcomes::interface, u"Outcome"_s, {url}, outcomeLimit);
    if (reply.type() == QDBusMessage::ReplyMessage) return reply.arguments().value(0).toString();
    return std::unexpected(sentenceOf(reply));
}

std::expected<QList<Preview>, QString> RunningInstance::openPreviews() {
    const QDBusMessage reply = ask(PreviewSwitches::interface, u"Open"_s, {}, limit);
    if (reply.type() != QDBusMessage::ReplyMessage) return std::unexpected(sentenceOf(reply));
    QList<Preview> open;
    for (const QString& name : reply.arguments().value(0).toStringList())
        if (const auto preview = previewNames.caseOf(QStringView(name))) open += *preview;
    return open;
}

RunningInstance::Outcome RunningInstance::switchPreview(const SwitchPreview& command) {
    const QDBusMessage reply = ask(PreviewSwitches::interface, u"Switch"_s,
                                   {previewNames.nameOf(command.preview), command.isOn}, limit);
    if (reply.type() == QDBusMessage::ReplyMessage) return {};
    return std::unexpected(sentenceOf(reply));
}

std::expected<void, RunningInstance::SelfTestRefusal> RunningInstance::beginSelfTest() {
    const QDBusMessage reply = ask(SelfTestService::interface, u"Begin"_s, {}, limit);
    if (reply.type() == QDBusMessage::ReplyMessage) return {};
    if (reply.errorName() == SelfTestService::busy)
        return std::unexpected(SelfTestRefusal{.sentence = reply.errorMessage(), .isBusy = true});
    return std::unexpected(SelfTestRefusal{.sentence = sentenceOf(reply)});
}

std::expected<std::optional<ReportedCheck>, QString> RunningInstance::nextSelfCheck(int number) {
    const QDBusMessage reply = ask(SelfTestService::interface, u"Next"_s, {number}, checkLimit);
    if (reply.type() != QDBusMessage::ReplyMessage) return std::unexpected(sentenceOf(reply));
    return decodeReportedCheck(reply.arguments().value(0).toByteArray());
}

RunningInstance::Outcome RunningInstance::call(const QString& method,
                                               const QVariantList& arguments) {
    const QDBusMessage reply = ask(ApplicationService::interface, method, arguments, limit);
    if (reply.type() == QDBusMessage::ReplyMessage) return {};
    return std::unexpected(sentenceOf(reply));
}

QDBusMessage RunningInstance::ask(const QString& interface, const QString& method,
                                  const QVariantList& arguments,
                                  std::chrono::milliseconds longest) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        ApplicationService::name, ApplicationService::path, interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return m_bus.call(message, QDBus::Block, static_cast<int>(longest.count()));
}

} // namespace vorq
