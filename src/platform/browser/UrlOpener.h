#pragma once

#include "platform/Workspace.h"

#include <QCoroTask>
#include <QString>

#include <expected>
#include <optional>
#include <stop_token>

class QUrl;

namespace vorq {

/// Opens addresses in the program that the user has chosen for them. Main thread only.
class UrlOpener {
  public:
    /// The application that came to the front with the address, where that can be known. The error
    /// says, for the log, why nothing was opened.
    using Opened = std::expected<std::optional<RunningApplication>, QString>;

    UrlOpener() = default;
    UrlOpener(const UrlOpener&) = delete;
    UrlOpener& operator=(const UrlOpener&) = delete;
    virtual ~UrlOpener() = default;

    /// Opens the address and brings its application to the front. Waits for both some seconds at
    /// most; a stop ends the wait and does not close what was opened. The object may be gone by the
    /// end of the wait.
    virtual QCoro::Task<Opened> openInFront(QUrl url, std::stop_token stop) = 0;

    /// Hands the address over without looking at what becomes of it. False if nobody accepts it.
    virtual bool open(const QUrl& url) = 0;
};

} // namespace vorq
