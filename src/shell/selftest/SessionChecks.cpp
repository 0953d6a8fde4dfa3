#include "shell/selftest/SessionChecks.h"

#include "platform/Accessibility.h"
#include "platform/trust/PrivacySettings.h"
#include "platform/trust/SessionFacts.h"

#include <QtGlobal>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

// A program that has just been started does not know of the bus yet.
constexpr auto trustLimit = 2s;
constexpr auto trustRound = 50ms;

} // namespace

QCoro::Task<SelfCheck> SessionCheck::run(std::stop_token) {
    const QString name = m_session.name();
    const QStringList limits = m_limits();
    SelfCheck result =
        ok({QT_TRANSLATE_NOOP("SelfTest", "The session is %1: nothing of Vorq is missing in it."),
            {name}});
    if (name.isEmpty())
        result = skipped(
            {QT_TRANSLATE_NOOP("SelfTest", "There is no desktop here. In a terminal without one, "
                                           "only vorq ask and the library work.")},
            {QT_TRANSLATE_NOOP("SelfTest", "To test the rest, run vorq doctor on the desktop.")});
    else if (!limits.isEmpty())
        result = warning({QT_TRANSLATE_NOOP("SelfTest", "The session is %1. In it: %2"),
                          {name, limits.join(u' ')}});
    co_return result;
}

QCoro::Task<SelfCheck> AccessibilityCheck::run(std::stop_token stop) {
    SelfCheck result = ok({QT_TRANSLATE_NOOP(
        "SelfTest", "Accessibility is on: applications may show Vorq what is highlighted.")});
    if (const PortSupport support = m_privacy.supported(); !support) {
        result = skipped(SelfTestText{"%1", {support.error()}});
        co_return result;
    }
    const Clock::Duration end = m_clock.now() + trustLimit;
    while (!m_accessibility.isTrusted() && m_clock.now() < end && !stop.stop_requested())
        co_await sleepFor(m_clock, trustRound, stop);
    if (!m_accessibility.isTrusted())
        result = failed(
            {QT_TRANSLATE_NOOP("SelfTest",
                               "Accessibility is off: no application shows Vorq its text.")},
            {QT_TRANSLATE_NOOP("SelfTest", "Turn it on in the menu of Vorq, or run: %1. If that "
                                           "does not help, install the package at-spi2-core."),
             {u"vorq enable-accessibility"_s}});
    co_return result;
}

QCoro::Task<SelfCheck> ProgramsCheck::run(std::stop_token stop) {
    SelfCheck result =
        ok({QT_TRANSLATE_NOOP("SelfTest", "No running program waits for a new start.")});
    if (!m_privacy.supported() || !m_accessibility.isTrusted()) {
        result = skipped({QT_TRANSLATE_NOOP("SelfTest", "Accessibility is off.")});
        co_return result;
    }
    const QStringList programs = co_await m_privacy.programsToRestart(std::move(stop));
    if (programs.isEmpty()) co_return result;
    result = warning(
        {QT_TRANSLATE_NOOP("SelfTest", "Programs that show Vorq no text, as they were started "
                                       "before accessibility was turned on: %1."),
         {QString::number(programs.size())}},
        {QT_TRANSLATE_NOOP("SelfTest", "Close these programs and start them again.")});
    result.details = programs;
    co_return result;
}

QCoro::Task<SelfCheck> PortalCheck::run(std::stop_token stop) {
    SelfCheck result = ok({QT_TRANSLATE_NOOP("SelfTest", "The desktop portal answers.")});
    if (m_session.name().isEmpty()) {
        result = skipped({QT_TRANSLATE_NOOP("SelfTest", "There is no desktop here.")});
        co_return result;
    }
    const PortSupport portal = co_await m_session.portal(std::move(stop));
    if (!portal)
        result = warning(
            {QT_TRANSLATE_NOOP("SelfTest", "%1 Vorq may not follow the desktop's dark or light."),
             {portal.error()}},
            {QT_TRANSLATE_NOOP("SelfTest",
                               "Install the package xdg-desktop-portal and one for your desktop, "
                               "such as xdg-desktop-portal-gtk.")});
    co_return result;
}

QCoro::Task<SelfCheck> TrayCheck::run(std::stop_token) {
    SelfCheck result = ok({QT_TRANSLATE_NOOP("SelfTest", "There is a tray for Vorq's menu.")});
    if (const PortSupport tray = m_tray(); !tray)
        result = warning(
            SelfTestText{"%1", {tray.error()}},
            {QT_TRANSLATE_NOOP("SelfTest", "Start Vorq once more to open its menu, or use its "
                                           "commands: vorq --help lists them.")});
    co_return result;
}

} // namespace vorq
