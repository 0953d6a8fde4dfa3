#pragma once

#include "capture/selection/SelectionCapture.h"

namespace vorq {

/// Captures nothing.
class BlindCapture final : public SelectionCapture {
  public:
    QString application; // the name of every one

    [[nodiscard]] bool isTrusted() const override { return true; }
    [[nodiscard]] std::optional<ProcessId> frontmostForeignProcess() const override {
        return std::nullopt;
    }
    [[nodiscard]] QString applicationName(ProcessId) const override { return application; }
    QCoro::Task<CapturedText> captureSelectedTextForHotKey(std::optional<ProcessId>,
                                                           std::stop_token) override {
        co_return CapturedText();
    }
    void log(const QString&) override {}
};

} // namespace vorq
