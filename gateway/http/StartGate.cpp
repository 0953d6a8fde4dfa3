#include "http/StartGate.h"

#include <utility>

namespace vorq::gateway {

StartGate::Visitor::Visitor(StartGate& gate, std::function<void()> call)
    : m_gate(gate), m_call(std::move(call)) {
    if (m_gate.m_inside < m_gate.m_mostInside) {
        ++m_gate.m_inside;
        m_isInside = true;
    } else {
        m_turn = m_gate.m_line.insert(m_gate.m_line.end(), this);
    }
}

StartGate::Visitor::~Visitor() {
    if (m_isInside) {
        --m_gate.m_inside;
        m_gate.admitNext();
    } else {
        m_gate.m_line.erase(m_turn);
    }
}

void StartGate::admitNext() {
    if (m_line.empty()) return;
    Visitor& next = *m_line.front();
    m_line.pop_front();
    ++m_inside;
    next.m_isInside = true;
    next.m_call();
}

} // namespace vorq::gateway
