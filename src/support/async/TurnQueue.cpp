#include "support/async/TurnQueue.h"

#include <utility>

namespace vorq {

TurnQueue::Turn::Turn(std::shared_ptr<Places> places)
    : m_places(std::move(places)), m_place(m_places->emplace(m_places->end())) {
    if (m_places->size() == 1) m_place->fire();
}

TurnQueue::Turn::Turn(Turn&& other) noexcept
    : m_places(std::move(other.m_places)), m_place(other.m_place) {}

TurnQueue::Turn::~Turn() {
    if (!m_places) return;
    const bool wasFirst = m_place == m_places->begin();
    m_places->erase(m_place);
    if (wasFirst && !m_places->empty()) m_places->front().fire();
}

} // namespace vorq
