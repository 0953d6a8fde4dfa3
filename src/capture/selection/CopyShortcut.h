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

    /// Whether there is a way to have the application copy; nothing stands for the one in front. If
    /// so, a copy that gives nothing says that the application has nothing to give.
    [[nodiscard]] virtual bool canCopyFrom(std::optional<ProcessId> source) const = 0;

    /// The text, trimmed; "" if nothing came.
    virtual QCoro::Task<QString> captureFromCopyShortcutFast(std::optional<ProcessId> source,
                                                             std::stop_token stop) = 0;
};

/// Sends nothing.
class NoCopyShortcut final : public CopyShortcut {
  public:
    [[nodiscard]] bool canCopyFrom(std::optional<ProcessId>) const override { return false; }
    QCoro::Task<QString> captureFromCopyShortcutFast(std::optional<ProcessId>,
                                                     std::stop_token) override {
        co_return QString();
    }
};

} // namespace vorq
