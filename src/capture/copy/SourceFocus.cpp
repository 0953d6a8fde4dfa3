#include "capture/copy/SourceFocus.h"

#include <QCoreApplication>

#include <utility>

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr auto modifierRound = 20ms;
constexpr auto activationPause = 80ms;
constexpr auto activationRound = 40ms;

} // namespace

bool SourceFocus::hasLeftoverModifiers() const {
    constexpr std::uint32_t leftovers =
        HeldModifier::shift | HeldModifier::control | HeldModifier::option;
    return (m_services.keys.heldModifiers() & leftovers) != 0;
}

QCoro::Task<> SourceFocus::waitForModifierKeysReleased(int maxAttempts, std::stop_token stop) {
    for (int round = 0; round < maxAttempts && !stop.stop_requested(); ++round) {
        if (!hasLeftoverModifiers()) co_return;
        co_await sleepFor(m_services.clock, modifierRound, stop);
    }
}

QString SourceFocus::identifierOf(ProcessId process) const {
    const auto application = m_services.workspace.application(process);
    return application ? application->identifier : QString();
}

// An application without an identifier is Vorq if Vorq has none either.
bool SourceFocus::isVorq(ProcessId process) const {
    const auto own = static_cast<ProcessId>(QCoreApplication::applicationPid());
    if (process == own) return true;
    const QString identifier = identifierOf(process);
    return !identifier.isEmpty() && identifier == identifierOf(own);
}

bool SourceFocus::isFrontmost(ProcessId process) const {
    return m_services.workspace.frontmostProcess() == process;
}

void SourceFocus::activate(ProcessId process) {
    Workspace& workspace = m_services.workspace;
    const auto active = workspace.activeWindow();
    if (active && workspace.processOf(*active) != process) m_displaced = active;
    if (const auto window = workspace.windowOf(process)) workspace.activate(*window);
}

QCoro::Task<> SourceFocus::activateSourceApp(std::optional<ProcessId> source,
                                             std::stop_token stop) {
    if (!source || !m_services.workspace.application(*source) || isVorq(*source)) co_return;
    if (isFrontmost(*source)) co_return;
    activate(*source);
    co_await sleepFor(m_services.clock, activationPause, std::move(stop));
}

QCoro::Task<bool> SourceFocus::bringToFront(ProcessId process, int rounds, std::stop_token stop) {
    for (int round = 0; round < rounds && !stop.stop_requested(); ++round) {
        if (isFrontmost(process)) co_return true;
        activate(process);
        co_await sleepFor(m_services.clock, activationRound, stop);
    }
    co_return isFrontmost(process);
}

void SourceFocus::giveBack(ProcessId process) {
    const auto displaced = std::exchange(m_displaced, std::nullopt);
    if (displaced && isFrontmost(process)) m_services.workspace.activate(*displaced);
}

} // namespace vorq
