#pragma once

#include "capture/selection/CapturedText.h"
#include "platform/ProcessId.h"

#include <QCoroTask>
#include <QString>

#include <cstdint>
#include <optional>
#include <stop_token>

namespace vorq {

/// Reads what the user has highlighted in another application. Failures are never errors: they
/// yield an empty text.
class SelectionCapture {
  public:
    SelectionCapture() = default;
    SelectionCapture(const SelectionCapture&) = delete;
    SelectionCapture& operator=(const SelectionCapture&) = delete;
    virtual ~SelectionCapture() = default;

    /// Whether reading by accessibility is allowed. Never asks the user.
    [[nodiscard]] virtual bool isTrusted() const = 0;

    /// The process of the application in front; nothing if there is none or it is Vorq itself.
    [[nodiscard]] virtual std::optional<ProcessId> frontmostForeignProcess() const = 0;

    /// The name of a process's application, "" if it has none.
    [[nodiscard]] virtual QString applicationName(ProcessId process) const = 0;

    /// The text highlighted in the process, or in whatever has the focus.
    virtual QCoro::Task<CapturedText> captureSelectedTextForHotKey(std::optional<ProcessId> source,
                                                                   std::stop_token stop) = 0;

    /// Adds a line to the log of captures.
    virtual void log(const QString& line) = 0;
};

/// Captures nothing, and is trusted with it.
class NoSelectionCapture final : public SelectionCapture {
  public:
    [[nodiscard]] bool isTrusted() const override { return true; }
    [[nodiscard]] std::optional<ProcessId> frontmostForeignProcess() const override { return {}; }
    [[nodiscard]] QString applicationName(ProcessId) const override { return {}; }
    QCoro::Task<CapturedText> captureSelectedTextForHotKey(std::optional<ProcessId>,
                                                           std::stop_token) override {
        co_return CapturedText();
    }
    void log(const QString&) override {}
};

} // namespace vorq
