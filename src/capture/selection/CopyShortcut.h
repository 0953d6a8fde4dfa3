#pragma once

#include "platform/ProcessId.h"

#include <QCoroTask>
#include <QString>

#include <cstdint>
#include <optional>
#include <stop_token>

namespace vorq {

/// The last resort of a capture: the application is sent its copy shortcut, and the clipboard is
/// given back afterwards.
class CopyShortcut {
  public:
    CopyShortcut() = default;
    CopyShortcut(const CopyShortcut&) = delete;
    CopyShortcut& operator=(const CopyShortcut&) = delete;
    virtual ~CopyShortcut() = default;

    /// The text, trimmed; "" if nothing came.
    virtual QCoro::Task<QString> captureFromCopyShortcutFast(std::optional<ProcessId> source,
                                                             std::stop_token stop) = 0;
};

/// Sends nothing.
class NoCopyShortcut final : public CopyShortcut {
  public:
    QCoro::Task<QString> captureFromCopyShortcutFast(std::optional<ProcessId>,
                                                     std::stop_token) override {
        co_return QString();
    }
};

} // namespace vorq
