#include "platform/linux/atspi/AtSpiWalk.h"

#include "platform/linux/atspi/AtSpiCalls.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vorq {
namespace {

constexpr std::size_t mostAtOnce = 160;

} // namespace

const AtSpiWalk::Facts& AtSpiWalk::facts(const AtSpiRef& element) {
    if (const auto known = m_facts.find(element); known != m_facts.end()) return known->second;
    std::vector<AtSpiRef> batch{element};
    // In the order of the walk, so from the first on.
    std::size_t taken = 0;
    for (; taken < m_pending.size() && batch.size() < mostAtOnce; ++taken)
        if (m_pending[taken] != element && !m_facts.contains(m_pending[taken]))
            batch.push_back(m_pending[taken]);
    m_pending.erase(m_pending.begin(), m_pending.begin() + static_cast<std::ptrdiff_t>(taken));
    lookAt(batch);
    return m_facts[element];
}

void AtSpiWalk::lookAt(const std::vector<AtSpiRef>& elements) {
    AtSpiBus::Messages calls;
    for (const AtSpiRef& element : elements) {
        calls.push_back(atspi::interfaces(element));
        calls.push_back(atspi::states(element));
    }
    const AtSpiBus::Messages replies = m_bus.call(calls, m_stop);
    calls.clear();
    std::vector<AtSpiRef> texts;
    std::vector<AtSpiRef> parents;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        m_facts[elements[i]] = {};
        if (atspi::offersText(replies[2 * i])) texts.push_back(elements[i]);
        const auto states = atspi::statesIn(replies[2 * i + 1]);
        // A sheet would list millions of cells.
        if (states && !atspi::has(*states, atspi::State::ManagesDescendants))
            parents.push_back(elements[i]);
    }
    std::ranges::transform(texts, std::back_inserter(calls), atspi::selectionCount);
    std::ranges::transform(parents, std::back_inserter(calls), atspi::children);
    const AtSpiBus::Messages answers = m_bus.call(calls, m_stop);
    for (std::size_t i = 0; i < texts.size(); ++i)
        m_facts[texts[i]].selections = atspi::integerIn(answers[i]);
    for (std::size_t i = 0; i < parents.size(); ++i)
        m_facts[parents[i]].children = atspi::refsIn(answers[texts.size() + i]);
}

} // namespace vorq
