#pragma once

#include "platform/PortSupport.h"
#include "shell/selftest/SelfTestCheck.h"

#include <functional>

namespace vorq {

class Accessibility;
class Clock;
class PrivacySettings;
class SessionFacts;

// What of the session Vorq needs beside its applications. What the checks are given must outlive
// them.

/// The kind of the session, and what of Vorq does not work in it.
class SessionCheck final : public SelfTestCheck {
  public:
    /// Why parts of Vorq do not work, a sentence each; sentences of ours.
    using Limits = std::function<QStringList()>;

    SessionCheck(SessionFacts& session, Limits limits)
        : m_session(session), m_limits(std::move(limits)) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("session"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    SessionFacts& m_session;
    Limits m_limits;
};

/// Whether applications may be read.
class AccessibilityCheck final : public SelfTestCheck {
  public:
    AccessibilityCheck(Clock& clock, const Accessibility& accessibility,
                       const PrivacySettings& privacy)
        : m_clock(clock), m_accessibility(accessibility), m_privacy(privacy) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("accessibility"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    Clock& m_clock;
    const Accessibility& m_accessibility;
    const PrivacySettings& m_privacy;
};

/// Which running programs would show their text only after a new start.
class ProgramsCheck final : public SelfTestCheck {
  public:
    ProgramsCheck(const Accessibility& accessibility, PrivacySettings& privacy)
        : m_accessibility(accessibility), m_privacy(privacy) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("programs"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    const Accessibility& m_accessibility;
    PrivacySettings& m_privacy;
};

class PortalCheck final : public SelfTestCheck {
  public:
    explicit PortalCheck(SessionFacts& session) : m_session(session) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("portal"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    SessionFacts& m_session;
};

/// Whether there is a tray.
class TrayCheck final : public SelfTestCheck {
  public:
    /// The error is a sentence of ours.
    using Tray = std::function<PortSupport()>;

    explicit TrayCheck(Tray tray) : m_tray(std::move(tray)) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("tray"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    Tray m_tray;
};

} // namespace vorq
