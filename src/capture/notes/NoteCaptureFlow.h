#pragma once

#include "platform/ProcessId.h"

#include <QCoroTask>
#include <QString>

#include <cstdint>
#include <optional>
#include <stop_token>

namespace vorq {

/// Files what is highlighted in another application into the draft of a note. Main thread only.
///
/// What is asked for is done in the order in which it was asked, however long each capture takes.
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
    virtual QCoro::Task<bool> pushAppleNoteDraft(std::stop_token stop) = 0;

    /// What the last of these told the user, "" for nothing.
    [[nodiscard]] virtual QString libraryMessage() const = 0;

    /// Why the last of them failed, as a sentence for the user; "" if it did not. Says more than
    /// libraryMessage(), which is silent where there was nothing to save.
    [[nodiscard]] virtual QString failure() const = 0;

    /// Whether a text that reads like a secret waits for the user to say what becomes of it. The
    /// next save takes its place.
    [[nodiscard]] virtual bool holdsText() const = 0;

    /// Saves the text that waits, all the same. Whether it was saved; if not, it goes on waiting.
    virtual QCoro::Task<bool> saveHeldText(std::stop_token stop) = 0;

    virtual void discardHeldText() = 0;
};

/// Saves nothing, and says so.
class NoNoteCapture final : public NoteCaptureFlow {
  public:
    [[nodiscard]] bool isAvailable() const override { return false; }
    QCoro::Task<bool> saveNoteFromSelection(std::optional<ProcessId>, QString, bool,
                                            std::stop_token) override {
        co_return false;
    }
    QCoro::Task<bool> pushAppleNoteDraft(std::stop_token) override { co_return false; }
    [[nodiscard]] QString libraryMessage() const override {
        return QStringLiteral("Notes cannot be captured yet.");
    }
    [[nodiscard]] QString failure() const override { return libraryMessage(); }
    [[nodiscard]] bool holdsText() const override { return false; }
    QCoro::Task<bool> saveHeldText(std::stop_token) override { co_return false; }
    void discardHeldText() override {}
};

} // namespace vorq
