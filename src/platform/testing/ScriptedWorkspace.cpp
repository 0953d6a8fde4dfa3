#include "platform/testing/ScriptedWorkspace.h"

namespace vorq {

void ScriptedWorkspace::launch(const RunningApplication& application) {
    m_applications[application.process] = application;
}

void ScriptedWorkspace::quit(ProcessId process) {
    m_applications.erase(process);
    if (m_frontmost == process) m_frontmost.reset();
}

void ScriptedWorkspace::bringToFront(ProcessId process) {
    m_frontmost = process;
    emit frontmostChanged(process, static_cast<quint64>(process));
}

void ScriptedWorkspace::bringUnknownToFront() {
    m_frontmost.reset();
    emit frontmostLost();
}

std::optional<WindowId> ScriptedWorkspace::activeWindow() const {
    return m_frontmost ? std::optional(static_cast<WindowId>(*m_frontmost)) : std::nullopt;
}

std::optional<RunningApplication> ScriptedWorkspace::application(ProcessId process) const {
    const auto found = m_applications.find(process);
    return found == m_applications.end() ? std::nullopt : std::optional(found->second);
}

std::optional<ProcessId> ScriptedWorkspace::processOf(WindowId window) const {
    const auto process = static_cast<ProcessId>(window);
    return m_applications.contains(process) ? std::optional(process) : std::nullopt;
}

std::optional<WindowId> ScriptedWorkspace::windowOf(ProcessId process) const {
    return m_applications.contains(process) ? std::optional(static_cast<WindowId>(process))
                                            : std::nullopt;
}

QString ScriptedWorkspace::titleOf(WindowId window) const {
    const auto found = m_titles.find(static_cast<ProcessId>(window));
    return found == m_titles.end() ? QString() : found->second;
}

void ScriptedWorkspace::activate(WindowId window) {
    const std::optional<ProcessId> process = processOf(window);
    if (!process) return;
    m_activations.push_back(window);
    if (!m_holdsBack) bringToFront(*process);
}

PortSupport ScriptedWorkspace::hide(ProcessId process) {
    if (!m_hiding) return m_hiding;
    m_hidden.push_back(process);
    if (m_frontmost == process) m_frontmost.reset();
    return {};
}

std::vector<ProcessId> ScriptedWorkspace::processesWithWindows() const {
    std::vector<ProcessId> processes;
    for (const auto& [process, application] : m_applications)
        processes.push_back(process);
    return processes;
}

} // namespace vorq
