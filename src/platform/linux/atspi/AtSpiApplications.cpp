#include "platform/linux/atspi/AtSpiApplications.h"

#include "platform/linux/atspi/AtSpiCalls.h"

#include <algorithm>
#include <unistd.h>
#include <utility>

namespace vorq {
namespace {

constexpr std::size_t mostSearched = 2500;
// An application that is started and ended all day must not fill the memory.
constexpr qsizetype mostRemembered = 256;

template<typename Make>
AtSpiBus::Messages callsFor(const std::vector<AtSpiRef>& elements, Make make) {
    AtSpiBus::Messages calls;
    for (const AtSpiRef& element : elements)
        calls.push_back(make(element));
    return calls;
}

AtSpiBus::Messages joined(AtSpiBus::Messages first, const AtSpiBus::Messages& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace

QString AtSpiApplications::serviceOf(ProcessId process, const std::stop_token& stop) {
    if (process == ::getpid()) return {};
    const auto find = [&](const std::vector<QString>& services) {
        const auto processes = processesOf(services, stop);
        const auto found = std::ranges::find(processes, std::optional(process));
        return found == processes.end()
                   ? QString()
                   : services[static_cast<std::size_t>(found - processes.begin())];
    };
    const QString told = find(m_bus.focusOrder().services());
    return told.isEmpty() ? find(registered(stop)) : told;
}

QString AtSpiApplications::focusedService(const std::stop_token& stop) {
    const std::optional<ProcessId> own = ::getpid();
    const std::vector<QString> told = m_bus.focusOrder().services();
    const auto toldProcesses = processesOf(told, stop);
    for (std::size_t i = 0; i < told.size(); ++i)
        if (toldProcesses[i] && toldProcesses[i] != own) return told[i];
    const std::vector<QString> services = registered(stop);
    const auto processes = processesOf(services, stop);
    for (std::size_t i = 0; i < services.size(); ++i) {
        if (!processes[i] || processes[i] == own) continue;
        const std::optional<AtSpiRef> window = activeWindow(services[i], stop);
        if (!window) continue;
        const auto states = atspi::statesIn(m_bus.call(atspi::states(*window), stop));
        if (states && atspi::has(*states, atspi::State::Active)) return services[i];
    }
    return {};
}

void AtSpiApplications::forgetFormerBus() {
    const int connection = m_bus.connection();
    if (std::exchange(m_connection, connection) == connection) return;
    m_processes.clear();
    m_toolkits.clear();
}

std::optional<ProcessId> AtSpiApplications::processOf(const QString& service,
                                                      const std::stop_token& stop) {
    return processesOf({service}, stop).front();
}

std::vector<std::optional<ProcessId>>
AtSpiApplications::processesOf(const std::vector<QString>& services, const std::stop_token& stop) {
    forgetFormerBus();
    if (m_processes.size() > mostRemembered) m_processes.clear();
    AtSpiBus::Messages calls;
    std::vector<QString> asked;
    for (const QString& service : services) {
        if (m_processes.contains(service)) continue;
        asked.push_back(service);
        calls.push_back(atspi::processOf(service));
    }
    const AtSpiBus::Messages replies = m_bus.call(calls, stop);
    std::vector<std::optional<ProcessId>> processes;
    for (const QString& service : services) {
        const auto index =
            static_cast<std::size_t>(std::ranges::find(asked, service) - asked.begin());
        if (index < replies.size())
            if (const auto process = atspi::numberIn(replies[index]))
                m_processes.insert(service, static_cast<ProcessId>(*process));
        const auto known = m_processes.constFind(service);
        processes.push_back(known == m_processes.constEnd() ? std::nullopt : std::optional(*known));
    }
    return processes;
}

std::vector<QString> AtSpiApplications::registered(const std::stop_token& stop) {
    const auto roots = atspi::refsIn(m_bus.call(atspi::children(atspi::registryRoot()), stop));
    std::vector<QString> services;
    for (const AtSpiRef& root : roots.value_or(std::vector<AtSpiRef>()))
        services.push_back(root.service);
    return services;
}

AtSpiToolkit AtSpiApplications::toolkitOf(const QString& service, const std::stop_token& stop) {
    forgetFormerBus();
    if (const auto known = m_toolkits.constFind(service); known != m_toolkits.constEnd())
        return *known;
    const AtSpiRef root = atspi::applicationRoot(service);
    const AtSpiBus::Messages replies =
        m_bus.call({atspi::toolkitName(root), atspi::name(root)}, stop);
    const auto name = atspi::propertyTextIn(replies[0]);
    if (!name) return {};
    const auto application = atspi::propertyTextIn(replies[1]);
    const AtSpiToolkit toolkit = atSpiToolkit(*name, application.value_or(QString()));
    // An application that is busy as it starts may leave one of the two unanswered.
    if (!application) return toolkit;
    if (m_toolkits.size() > mostRemembered) m_toolkits.clear();
    return *m_toolkits.insert(service, toolkit);
}

std::optional<AtSpiRef> AtSpiApplications::activeWindow(const QString& service,
                                                        const std::stop_token& stop) {
    const AtSpiRef root = atspi::applicationRoot(service);
    const auto windows = atspi::refsIn(m_bus.call(atspi::children(root), stop));
    if (!windows) return std::nullopt;
    const AtSpiBus::Messages replies = m_bus.call(callsFor(*windows, atspi::states), stop);
    std::optional<AtSpiRef> showing;
    for (std::size_t i = 0; i < windows->size(); ++i) {
        const std::uint64_t states = atspi::statesIn(replies[i]).value_or(0);
        if (atspi::has(states, atspi::State::Active)) return (*windows)[i];
        if (!showing && atspi::has(states, atspi::State::Showing)) showing = (*windows)[i];
    }
    return showing;
}

std::optional<AtSpiRef> AtSpiApplications::focusedElement(const QString& service,
                                                          const std::stop_token& stop) {
    if (const auto told = choose(m_bus.focusOrder().candidates(service), stop)) return told;
    const std::optional<AtSpiRef> window = activeWindow(service, stop);
    if (!window) return std::nullopt;
    auto found = atspi::refsIn(m_bus.call(atspi::focusedBelow(*window), stop));
    if (!found || found->empty()) found = searchFocused(*window, stop);
    std::ranges::reverse(*found);
    return choose(*found, stop);
}

void AtSpiApplications::learnFocus(ProcessId process, const std::stop_token& stop) {
    const QString service = serviceOf(process, stop);
    if (service.isEmpty() || !m_bus.focusOrder().candidates(service).empty()) return;
    if (const auto found = focusedElement(service, stop)) m_bus.learnFocus(*found);
}

// The first, of those that still say that they have the focus if any does, with a selected text,
// else with a text, else at all. While a key is grabbed none may say so.
std::optional<AtSpiRef> AtSpiApplications::choose(const std::vector<AtSpiRef>& candidates,
                                                  const std::stop_token& stop) {
    const std::size_t count = candidates.size();
    const AtSpiBus::Messages replies = m_bus.call(
        joined(callsFor(candidates, atspi::states), callsFor(candidates, atspi::interfaces)), stop);
    // Of one alone, its text makes no difference.
    const auto hasText = [&](std::size_t i) {
        return count > 1 && atspi::offersText(replies[count + i]);
    };
    AtSpiBus::Messages calls;
    for (std::size_t i = 0; i < count; ++i)
        if (hasText(i)) calls.push_back(atspi::selectionCount(candidates[i]));
    const AtSpiBus::Messages selections = m_bus.call(calls, stop);
    std::optional<AtSpiRef> best;
    int bestRank = 0;
    std::size_t text = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto selected = hasText(i) ? atspi::integerIn(selections[text++]) : std::nullopt;
        const auto states = atspi::statesIn(replies[i]);
        if (!states) continue;
        const int rank = (atspi::has(*states, atspi::State::Focused) ? 4 : 1) + (selected ? 1 : 0) +
                         (selected.value_or(0) > 0 ? 1 : 0);
        if (rank <= bestRank) continue;
        best = candidates[i];
        bestRank = rank;
    }
    return best;
}

std::vector<AtSpiRef> AtSpiApplications::searchFocused(const AtSpiRef& window,
                                                       const std::stop_token& stop) {
    std::vector<AtSpiRef> focused;
    std::vector<AtSpiRef> level{window};
    std::size_t budget = mostSearched;
    while (!level.empty() && budget > 0 && !stop.stop_requested()) {
        if (level.size() > budget) level.resize(budget);
        budget -= level.size();
        const AtSpiBus::Messages states = m_bus.call(callsFor(level, atspi::states), stop);
        std::vector<AtSpiRef> parents;
        for (std::size_t i = 0; i < level.size(); ++i) {
            const std::uint64_t bits = atspi::statesIn(states[i]).value_or(0);
            if (atspi::has(bits, atspi::State::Focused)) focused.push_back(level[i]);
            // A sheet would list millions of cells.
            if (!atspi::has(bits, atspi::State::ManagesDescendants)) parents.push_back(level[i]);
        }
        std::vector<AtSpiRef> next;
        for (const QDBusMessage& reply : m_bus.call(callsFor(parents, atspi::children), stop))
            for (AtSpiRef& child : atspi::refsIn(reply).value_or(std::vector<AtSpiRef>()))
                next.push_back(std::move(child));
        level = std::move(next);
    }
    return focused;
}

} // namespace vorq
