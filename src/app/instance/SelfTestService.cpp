#include "app/instance/SelfTestService.h"

#include "app/instance/LinkOutcomes.h"
#include "shell/selftest/SelfTest.h"
#include "shell/selftest/SelfTestReport.h"

#include <algorithm>
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

void SelfTestService::refuse(const QDBusMessage& message, const QString& error,
                             const QString& sentence) const {
    message.setDelayedReply(true);
    m_bus.send(message.createErrorReply(error, sentence));
}

void SelfTestService::Begin(const QDBusMessage& message) {
    SelfTest* test = wantedTest();
    if (test == nullptr) return refuse(message, LinkOutcomes::failed, u"Vorq is about to end."_s);
    if (test->isRunning()) return refuse(message, busy, u"Vorq tests itself already."_s);
    m_caller.addWatchedService(message.service());
    test->start();
}

bool SelfTestService::canAnswer(int number) const {
    return !m_test || !m_test->isRunning() ||
           static_cast<std::size_t>(number) < m_test->results().size();
}

std::optional<QByteArray> SelfTestService::answerTo(int number) const {
    if (!m_test) return std::nullopt;
    const std::vector<SelfCheck>& results = m_test->results();
    const auto index = static_cast<std::size_t>(number);
    if (index < results.size()) return encode(reported(results[index], m_secrets()));
    if (results.size() < m_test->count()) return std::nullopt;
    return QByteArray();
}

void SelfTestService::answer(const Question& question) const {
    const auto told = answerTo(question.number);
    if (told)
        m_bus.send(question.message.createReply(*told));
    else
        refuse(question.message, LinkOutcomes::failed, u"The test was cut short."_s);
}

QByteArray SelfTestService::Next(int number, const QDBusMessage& message) {
    message.setDelayedReply(true);
    const Question question{.number = std::max(number, 0), .message = message};
    if (canAnswer(question.number))
        answer(question);
    else
        m_waiting.push_back(question);
    return {};
}

void SelfTestService::answerAll() {
    for (const Question& question : std::exchange(m_waiting, {})) {
        if (canAnswer(question.number))
            answer(question);
        else
            m_waiting.push_back(question);
    }
}

} // namespace vorq
