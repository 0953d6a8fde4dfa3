#pragma once

#include <QObject>

namespace vorq {

class CaptureLog;
class FrontmostWatchService;
class Previews;
class StatusItem;

/// Starts and stops the watch of the application in front as its preview is switched, and has the
/// status item tell of it all the while. Main thread only.
class WatchSwitch final : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object.
    struct Services {
        Previews& previews;
        FrontmostWatchService& watch;
        StatusItem& statusItem;
        /// Learns that something was sampled, and never what.
        CaptureLog& log;
    };

    explicit WatchSwitch(const Services& services);

  private:
    void apply();

    Services m_services;
};

} // namespace vorq
