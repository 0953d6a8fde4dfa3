#include "capture/source/FrontmostTracker.h"

#include "capture/source/SourceProcess.h"

#include <utility>

namespace vorq {

FrontmostTracker::FrontmostTracker(Workspace& workspace, Self self, QObject* parent)
    : QObject(parent), m_workspace(workspace), m_self(std::move(self)) {}

void FrontmostTracker::startFrontmostTracking() {
    if (const auto process = m_workspace.frontmostProcess()) note(*process);
    connect(&m_workspace, &Workspace::frontmostChanged, this, &FrontmostTracker::note,
            Qt::UniqueConnection);
    connect(&m_workspace, &Workspace::frontmostLost, this, &FrontmostTracker::forget,
            Qt::UniqueConnection);
}

void FrontmostTracker::stopFrontmostTracking() {
    disconnect(&m_workspace, nullptr, this, nullptr);
}

std::optional<ProcessId> FrontmostTracker::resolveSourcePID(std::optional<ProcessId> sourcePID) {
    const std::optional<ProcessId> frontmost = m_workspace.frontmostProcess();
    // It may have come to the front only just now, and not have been told of.
    if (!frontmost && !m_workspace.knowsAllApplications()) forget();
    return vorq::resolveSourcePID({.own = m_self.process,
                                   .given = sourcePID,
                                   .lastForeign = m_lastForeign,
                                   .frontmost = frontmost});
}

void FrontmostTracker::forget() {
    m_lastForeign.reset();
}

void FrontmostTracker::note(ProcessId process) {
    if (!isVorq(process)) m_lastForeign = process;
}

// An application without an identifier is Vorq if Vorq has none either.
bool FrontmostTracker::isVorq(ProcessId process) const {
    if (process == m_self.process) return true;
    const auto application = m_workspace.application(process);
    const QString identifier = application ? application->identifier : QString();
    return identifier == m_self.bundleIdentifier;
}

} // namespace vorq
