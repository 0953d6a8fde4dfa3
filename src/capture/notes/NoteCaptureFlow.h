#pragma once

#include "platform/ProcessId.h"

#include <QCoroTask>
#include <QString>

#include <cstdint>
#include <optional>
#include <stop_token>

namespace vorq {

/// Files what is highlighted in another application into the draft of a note. Main thread only.
class NoteCaptureFlow {
  public:
    NoteCaptureFlow() = default;
    NoteCaptureFlow(const NoteCaptureFlow&) = delete;
    NoteCaptureFlow& operator=(const NoteCaptureFlow&) = delete;
    virtual ~NoteCaptureFlow() = default;

    /// Whether it can save anything at all.
    [[nodiscard]] virtual bool isAvailable() const = 0;

    /// Whether the text was saved. An identifier of "(none)" is looked for anew.
    virtual QCoro::Task<bool> saveNoteFromSelection(std::optional<ProcessId> sourcePID,
                                                    QString frontBundleID, bool requireBrowser,
                                                    std::stop_token stop) = 0;

    /// Seals the draft; false if there is none.
    virtual bool pushAppleNoteDraft() = 0;

    /// What the last of these told the user, "" for nothing.
    [[nodiscard]] virtual QString libraryMessage() const = 0;
};

/// Saves nothing, and says so.
class NoNoteCapture final : public NoteCaptureFlow {
  public:
    [[nodiscard]] bool isAvailable() const override { return false; }
    QCoro::Task<bool> saveNoteFromSelection(std::optional<ProcessId>, QString, bool,
                                            std::stop_token) override {
        co_return false;
    }
    bool pushAppleNoteDraft() override { return false; }
    [[nodiscard]] QString libraryMessage() const override {
        return QStringLiteral("Notes cannot be captured yet.");
    }
};

} // namespace vorq
