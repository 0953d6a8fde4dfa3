#include "shell/permissions/SelfTestRun.h"

#include "shell/selftest/SelfTest.h"

#include <algorithm>

namespace vorq {

void SelfTestRun::follow() {
    if (m_test) return;
    SelfTest& test = m_provide();
    m_test = &test;
    connect(&test, &SelfTest::started, this, &SelfTestRun::join);
    connect(&test, &SelfTest::checked, this, [this](const SelfCheck& result) {
        m_checks.finishCheck(result);
        emit changed();
    });
    connect(&test, &SelfTest::finished, this, [this] {
        m_checks.end();
        setTesting(false);
    });
    if (test.isRunning()) join();
}

void SelfTestRun::join() {
    m_checks.begin(m_test->ids());
    for (const SelfCheck& result : m_test->results())
        m_checks.finishCheck(result);
    setTesting(true);
}

void SelfTestRun::start() {
    follow();
    if (m_isTesting) return;
    m_isOurs = true;
    m_test->start();
}

void SelfTestRun::cancel() {
    if (m_isTesting && m_test) m_test->cancel();
}

void SelfTestRun::leave() {
    if (m_isOurs) cancel();
}

void SelfTestRun::setTesting(bool isTesting) {
    m_isTesting = isTesting;
    if (!isTesting) m_isOurs = false;
    emit changed();
}

int SelfTestRun::failures() const {
    if (!m_test) return 0;
    return static_cast<int>(
        std::ranges::count(m_test->results(), SelfCheckState::Failed, &SelfCheck::state));
}

bool SelfTestRun::hasPassed() const {
    return m_test && m_test->hasPassed();
}

QString SelfTestRun::outcome() const {
    if (!m_test || m_isTesting || total() == 0) return {};
    const int failed = failures();
    if (failed == 1) return tr("One thing does not work.");
    if (failed > 1) return tr("%1 things do not work.").arg(failed);
    if (!hasPassed()) return tr("The test was ended early.");
    return tr("Vorq works on this desktop.");
}

} // namespace vorq
