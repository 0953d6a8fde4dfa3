#include "capture/source/CaptureGate.h"

#include <QCoreApplication>

namespace vorq {

std::optional<ProcessId> CaptureGate::frontmostForeignProcess() const {
    const auto process = m_workspace.frontmostProcess();
    return process == QCoreApplication::applicationPid() ? std::nullopt : process;
}

std::optional<ProcessId> CaptureGate::settled(std::optional<ProcessId> source) const {
    return source || m_excluded.isEmpty() ? source : frontmostForeignProcess();
}

bool CaptureGate::admits(std::optional<ProcessId> source) const {
    if (!isTrusted()) return false;
    if (source) return !excludes(source);
    return m_workspace.knowsAllApplications() && m_excluded.isEmpty();
}

bool CaptureGate::excludes(std::optional<ProcessId> source) const {
    return source && m_excluded.contains(identifierOf(source));
}

QString CaptureGate::applicationName(ProcessId process) const {
    const auto application = m_workspace.application(process);
    return application ? application->name : QString();
}

QString CaptureGate::identifierOf(std::optional<ProcessId> process) const {
    const auto application = process ? m_workspace.application(*process) : std::nullopt;
    return application ? application->identifier : QString();
}

QString CaptureGate::identifierOfSource(std::optional<ProcessId> source) const {
    return identifierOf(source ? source : m_workspace.frontmostProcess());
}

} // namespace vorq
