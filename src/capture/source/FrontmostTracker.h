#pragma once

#include "platform/Workspace.h"

#include <QObject>

#include <optional>

namespace vorq {

/// Remembers the last application other than Vorq that came to the front. Main thread only.
class FrontmostTracker final : public QObject {
    Q_OBJECT

  public:
    /// This process and the identifier of its application.
    struct Self {
        ProcessId process = 0;
        QString bundleIdentifier;
    };

    /// The workspace must outlive this object.
    FrontmostTracker(Workspace& workspace, Self self, QObject* parent = nullptr);

    void startFrontmostTracking();
    void stopFrontmostTracking();

    [[nodiscard]] std::optional<ProcessId> lastForeignFrontmostPID() const { return m_lastForeign; }

    /// The process to read a selection from, given the one in front when the user asked; nothing if
    /// only Vorq itself is left, or an application is in front that the workspace does not know.
    [[nodiscard]] std::optional<ProcessId> resolveSourcePID(std::optional<ProcessId> sourcePID);

  private:
    void note(ProcessId process);
    void forget();
    [[nodiscard]] bool isVorq(ProcessId process) const;

    Workspace& m_workspace;
    Self m_self;
    std::optional<ProcessId> m_lastForeign;
};

} // namespace vorq
