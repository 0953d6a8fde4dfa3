#include "app/instance/SelfTestService.h"

#include "app/instance/LinkOutcomes.h"
#include "shell/selftest/SelfTest.h"
#include "shell/selftest/SelfTestReport.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

SelfTestService::SelfTestService(const QDBusConnection& bus, QObject* object)
    : QDBusAbstractAdaptor(object), m_bus(bus) {
    m_caller.setConnection(bus);
    m_caller.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_caller, &QDBusServiceWatcher::serviceUnregistered, this,
            [this](const QString& name) {
                m_caller.removeWatchedService(name);
                if (m_test) m_test->cancel();
            });
}

void SelfTestService::serve(QObject& owner, Provide provide, Secrets secrets) {
    m_owner = &owner;
    m_provide = std::move(provide);
    m_secrets = std::move(secrets);
}

SelfTest* SelfTestService::wantedTest() {
    if (m_test || !m_owner) return m_test;
    m_test = &m_provide();
    connect(m_test, &SelfTest::checked, this, &SelfTestService::answerAll);
    connect(m_test, &SelfTest::finished, this, [this] {
        for (const QString& name : m_caller.watchedServices())
            m_caller.removeWatchedService(name);
        answerAll();
    });
    return m_test;
}

void SelfTestService::refuse(const QDBusMessage& message, const QString& sentence) const {
    message.setDelayedReply(true);
    m_bus.send(message.createErrorReply(LinkOutcomes::failed, sentence));
}

void SelfTestService::Begin(const QDBusMessage& message) {
    SelfTest* test = wantedTest();
    if (test == nullptr) return refuse(message, u"Vorq is about to end."_s);
    if (test->isRunning()) return refuse(message, u"Vorq tests itself already."_s);
    m_caller.addWatchedService(message.service());
    test->start();
}

bool SelfTestService::canAnswer(int number) const {
    return !m_test || !m_test->isRunning() ||
           static_cast<std::size_t>(number) < m_test->results().size();
}

QByteArray SelfTestService::answerTo(int number) const {
    const auto index = static_cast<std::size_t>(number);
    if (!m_test || number < 0 || index >= m_test->results().size()) return {};
    return encode(reported(m_test->results()[index], m_secrets()));
}

QByteArray SelfTestService::Next(int number, const QDBusMessage& message) {
    if (number < 0 || canAnswer(number)) return answerTo(number);
    message.setDelayedReply(true);
    m_waiting.push_back({.number = number, .message = message});
    return {};
}

void SelfTestService::answerAll() {
    for (const Question& question : std::exchange(m_waiting, {})) {
        if (canAnswer(question.number))
            m_bus.send(question.message.createReply(answerTo(question.number)));
        else
            m_waiting.push_back(question);
    }
}

} // namespace vorq
