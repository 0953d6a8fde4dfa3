#include "shell/selftest/HotKeyCheck.h"

#include "platform/copying/KeyPoster.h"
#include "shell/selftest/TestStage.h"

#include <QScopeGuard>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr auto arrivalLimit = 1s;
constexpr auto arrivalRound = 20ms;

// In the order of the table.
QString listed(const std::set<HotKeyAction>& actions, QString (*nameOf)(const HotKeyEntry&)) {
    QStringList names;
    for (const HotKeyEntry& entry : hotKeyTable)
        if (actions.contains(entry.action)) names += nameOf(entry);
    return names.join(u", "_s);
}

QString verbOf(const HotKeyEntry& entry) {
    return QString::fromLatin1(entry.verb);
}

std::set<HotKeyAction> without(const std::set<HotKeyAction>& all,
                               const std::set<HotKeyAction>& some) {
    std::set<HotKeyAction> rest;
    std::ranges::set_difference(all, some, std::inserter(rest, rest.end()));
    return rest;
}

} // namespace

QCoro::Task<SelfCheck> HotKeyCheck::run(std::stop_token stop) {
    const HotKeyHandler& hotKeys = m_services.hotKeys;
    SelfCheck result;
    if (const PortSupport support = m_services.stage->window().supported(); !support) {
        result = skipped(SelfTestText{"%1", {support.error()}});
        co_return result;
    }
    if (m_services.areOfAnother) {
        result = skipped({QT_TRANSLATE_NOOP("SelfTest", "The Vorq that runs has them.")});
        co_return result;
    }
    if (!hotKeys.canRegister()) {
        result =
            warning({QT_TRANSLATE_NOOP("SelfTest", "This desktop keeps global keys to itself.")},
                    {QT_TRANSLATE_NOOP("SelfTest", "Bind keys of your desktop to: %1"),
                     {listed(hotKeys.offered(), verbOf)}});
        co_return result;
    }
    const auto taken = without(hotKeys.offered(), hotKeys.registered());
    if (!taken.empty()) {
        result = failed({QT_TRANSLATE_NOOP("SelfTest", "Taken by another program: %1."),
                         {listed(taken, keysOf)}},
                        {QT_TRANSLATE_NOOP("SelfTest", "Bind keys of your desktop to: %1"),
                         {listed(taken, verbOf)}});
        co_return result;
    }
    const PortSupport canPress = m_services.keys.supported();
    if (!canPress) {
        result = skipped(
            {QT_TRANSLATE_NOOP("SelfTest", "The hot keys are registered, but could not be pressed "
                                           "for a test. %1"),
             {canPress.error()}});
        co_return result;
    }
    if (!m_services.stage->isInFront()) {
        result = skipped({QT_TRANSLATE_NOOP("SelfTest", "The hot keys are registered, but were not "
                                                        "pressed: the test window is not in "
                                                        "front.")});
        co_return result;
    }
    const Actions arrived = co_await pressAll(std::move(stop));
    result = judge(arrived);
    co_return result;
}

QCoro::Task<HotKeyCheck::Actions> HotKeyCheck::pressAll(std::stop_token stop) {
    const auto arrived = std::make_shared<Actions>();
    m_services.hotKeys.setDiversion([arrived](HotKeyAction action) { arrived->insert(action); });
    const auto atEnd = qScopeGuard([this] { m_services.hotKeys.setDiversion({}); });
    for (const HotKeyEntry& entry : hotKeyTable) {
        const auto process = m_services.stage->process();
        if (!m_services.hotKeys.registered().contains(entry.action) || !process) continue;
        if (stop.stop_requested() || !m_services.keys.press(entry.chord, *process)) break;
        const Clock::Duration end = m_services.clock.now() + arrivalLimit;
        while (!arrived->contains(entry.action) && m_services.clock.now() < end &&
               !stop.stop_requested())
            co_await sleepFor(m_services.clock, arrivalRound, stop);
    }
    Actions result = std::move(*arrived);
    co_return result;
}

SelfCheck HotKeyCheck::judge(const Actions& arrived) const {
    const auto lost = without(m_services.hotKeys.registered(), arrived);
    if (lost.empty())
        return ok({QT_TRANSLATE_NOOP("SelfTest", "The hot keys reach Vorq: %1."),
                   {listed(arrived, keysOf)}});
    if (!m_services.stage->isInFront())
        return skipped({QT_TRANSLATE_NOOP("SelfTest", "Another window came to the front.")});
    return failed({QT_TRANSLATE_NOOP("SelfTest", "Pressed, but did not reach Vorq: %1."),
                   {listed(lost, keysOf)}},
                  {QT_TRANSLATE_NOOP("SelfTest", "Bind keys of your desktop to: %1"),
                   {listed(lost, verbOf)}});
}

} // namespace vorq
