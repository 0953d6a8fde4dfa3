#include "shell/permissions/Walkthrough.h"

#include "areas/Permissions.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"
#include "platform/trust/PrivacySettings.h"

#include <utility>

namespace vorq {

Walkthrough::Walkthrough(Services services)
    : m_services(std::move(services)),
      m_rows(m_services.permissions),
      m_selfTest(m_services.selfTest) {
    connect(&m_services.permissions, &Permissions::changed, this, &Walkthrough::followPermission);
}

Walkthrough::~Walkthrough() = default;

bool Walkthrough::canAsk() const {
    return !m_isAsking && m_services.privacy.supported().has_value();
}

QString Walkthrough::problem() const {
    if (const PortSupport support = m_services.privacy.supported(); !support)
        return support.error();
    return m_wasRefused ? tr("Accessibility could not be turned on: nothing answers. Install the "
                             "package at-spi2-core, sign out of the desktop and in again.")
                        : QString();
}

void Walkthrough::offerInFirstRun() {
    if (m_services.defaults.boolean(shownKey).value_or(false)) return;
    m_offering.restart(
        [self = QPointer(this)](std::stop_token stop) { return offer(self, std::move(stop)); });
}

QCoro::Task<> Walkthrough::offer(QPointer<Walkthrough> self, std::stop_token stop) {
    co_await sleepFor(self->m_services.clock, offerDelay, stop);
    if (!self || stop.stop_requested()) co_return;
    Permissions& permissions = self->m_services.permissions;
    permissions.refreshPermissions();
    if (self->isGranted()) co_return;
    self->m_services.defaults.setBoolean(shownKey, true);
    permissions.setShowAccessibilityWalkthrough(true);
}

void Walkthrough::begin() {
    m_asking.cancel();
    m_isAsking = false;
    m_wasRefused = false;
    m_services.permissions.refreshPermissions();
    showPermission();
}

void Walkthrough::showPermission() {
    const bool isGranted = this->isGranted();
    showPage(isGranted ? Page::Granted : Page::Request);
    if (isGranted) lookForPrograms();
}

bool Walkthrough::isGranted() const {
    return m_services.permissions.textCapturePermission() == PermissionState::Granted;
}

void Walkthrough::refresh() {
    m_services.permissions.refreshPermissions();
    if (m_page == Page::Granted) lookForPrograms();
}

void Walkthrough::openSystemSettings() {
    if (m_page != Page::Request || !canAsk()) return;
    m_isAsking = true;
    m_wasRefused = false;
    emit changed();
    m_services.permissions.requestTextCapturePermission();
    followPermission();
    if (m_page != Page::Request) return;
    m_asking.restart([self = QPointer(this)](std::stop_token stop) {
        return awaitAnswer(self, std::move(stop));
    });
}

QCoro::Task<> Walkthrough::awaitAnswer(QPointer<Walkthrough> self, std::stop_token stop) {
    co_await sleepFor(self->m_services.clock, answerLimit, stop);
    if (!self || stop.stop_requested()) co_return;
    self->m_services.permissions.refreshPermissions();
    // Its change may have been the answer.
    if (!self || stop.stop_requested()) co_return;
    self->endAsking(!self->isGranted());
}

void Walkthrough::endAsking(bool isRefused) {
    m_isAsking = false;
    m_wasRefused = isRefused;
    emit changed();
}

// The system may take a moment; its answer comes as a change of the permission. The help may be on
// show by then.
void Walkthrough::followPermission() {
    const bool isGranted = this->isGranted();
    if (isGranted) {
        m_asking.cancel();
        endAsking(false);
    }
    if (m_page == Page::Request && isGranted) {
        showPage(Page::Granted);
        lookForPrograms();
    } else if (m_page == Page::Granted && !isGranted) {
        showPage(Page::Request);
    }
}

void Walkthrough::lookForPrograms() {
    m_isLooking = m_programs.isEmpty();
    emit changed();
    m_finding.restart([self = QPointer(this)](std::stop_token stop) {
        return findPrograms(self, std::move(stop));
    });
}

QCoro::Task<> Walkthrough::findPrograms(QPointer<Walkthrough> self, std::stop_token stop) {
    while (self && !stop.stop_requested()) {
        const QStringList programs = co_await self->m_services.privacy.programsToRestart(stop);
        if (!self || stop.stop_requested()) co_return;
        self->m_isLooking = false;
        self->m_programs = programs;
        emit self->changed();
        if (programs.isEmpty()) co_return;
        co_await sleepFor(self->m_services.clock, lookInterval, stop);
    }
}

void Walkthrough::deny() {
    m_services.permissions.denyAccessibilityWalkthrough();
}

void Walkthrough::close() {
    m_selfTest.leave();
    m_finding.cancel();
    const bool isRequest =
        m_page == Page::Request || (m_page == Page::Help && m_helped == Page::Request);
    if (isRequest) return deny();
    m_services.permissions.setShowAccessibilityWalkthrough(false);
}

void Walkthrough::showPage(Page page) {
    if (m_page == page) return;
    m_page = page;
    if (page != Page::Granted) m_finding.cancel();
    emit changed();
}

void Walkthrough::showSelfTest() {
    m_selfTest.follow();
    showPage(Page::Checks);
}

void Walkthrough::showHelp() {
    if (m_page != Page::Help) m_helped = m_page;
    showPage(Page::Help);
}

// The permission may have changed meanwhile.
void Walkthrough::goBack() {
    if (m_page == Page::Help && m_helped == Page::Checks)
        showPage(Page::Checks);
    else
        showPermission();
}

} // namespace vorq
