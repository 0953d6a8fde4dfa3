#pragma once

#include "capture/selection/CaptureThread.h"
#include "shell/selftest/SelfTestCheck.h"

#include <memory>

namespace vorq {

class Accessibility;
class CopyShortcut;
class Pasteboard;
class PasteOver;
class PrimarySelection;
class TestStage;

// What Vorq does with other applications, tried out on the window of the stage. What the checks are
// given must outlive them.

/// Opens the window. The checks below do nothing without it.
class WindowCheck final : public SelfTestCheck {
  public:
    explicit WindowCheck(std::shared_ptr<TestStage> stage) : m_stage(std::move(stage)) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("window"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    std::shared_ptr<TestStage> m_stage;
};

/// Captures by accessibility.
class AccessibleCaptureCheck final : public SelfTestCheck {
  public:
    AccessibleCaptureCheck(Clock& clock, Accessibility& accessibility,
                           std::shared_ptr<TestStage> stage);

    [[nodiscard]] QString id() const override { return QStringLiteral("capture-accessibility"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    Clock& m_clock;
    Accessibility& m_accessibility;
    std::shared_ptr<TestStage> m_stage;
    CaptureThread m_thread;
};

/// Captures what the window hands out as highlighted.
class HighlightCaptureCheck final : public SelfTestCheck {
  public:
    HighlightCaptureCheck(Clock& clock, PrimarySelection& primary,
                          std::shared_ptr<TestStage> stage);

    [[nodiscard]] QString id() const override { return QStringLiteral("capture-primary"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    Clock& m_clock;
    PrimarySelection& m_primary;
    std::shared_ptr<TestStage> m_stage;
    CaptureThread m_thread;
};

/// The user's clipboard, as far as a check may use it.
struct LentClipboard {
    Pasteboard& pasteboard;
    /// Whether this process is still there afterwards to hand out what it gives back.
    bool staysAfterwards = true;
};

/// Captures by the copy shortcut.
class CopyCaptureCheck final : public SelfTestCheck {
  public:
    CopyCaptureCheck(Clock& clock, CopyShortcut& copyShortcut, const LentClipboard& clipboard,
                     std::shared_ptr<TestStage> stage)
        : m_clock(clock),
          m_copyShortcut(copyShortcut),
          m_clipboard(clipboard),
          m_stage(std::move(stage)) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("capture-copy"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    Clock& m_clock;
    CopyShortcut& m_copyShortcut;
    LentClipboard m_clipboard;
    std::shared_ptr<TestStage> m_stage;
};

/// Replaces a word and puts it back.
class ReplacementCheck final : public SelfTestCheck {
  public:
    ReplacementCheck(Clock& clock, Accessibility& accessibility, PasteOver& pasteOver,
                     const LentClipboard& clipboard, std::shared_ptr<TestStage> stage);

    [[nodiscard]] QString id() const override { return QStringLiteral("replacement"); }
    /// It has applications shown a paste late, and does it twice.
    [[nodiscard]] Clock::Duration limit() const override { return std::chrono::seconds(20); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    QCoro::Task<SelfCheck> replace(std::stop_token stop);

    Clock& m_clock;
    Accessibility& m_accessibility;
    PasteOver& m_pasteOver;
    LentClipboard m_clipboard;
    std::shared_ptr<TestStage> m_stage;
    CaptureThread m_thread;
};

} // namespace vorq
