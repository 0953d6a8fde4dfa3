#pragma once

#include "app/instance/ApplicationService.h"
#include "shell/selftest/SelfTestReport.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <chrono>
#include <expected>
#include <optional>

namespace vorq {

/// The Vorq that runs already in this session, as a second start of the program sees it. All calls
/// wait for their answer, but never longer than their limit. The errors are sentences for the user.
class RunningInstance {
  public:
    using Outcome = std::expected<void, QString>;

    static constexpr std::chrono::milliseconds limit{2000};
    /// Of what waits for the backend, which has a limit of its own.
    static constexpr std::chrono::milliseconds outcomeLimit{75'000};

    explicit RunningInstance(const QDBusConnection& bus) : m_bus(bus) {}

    /// False as well if there is no bus to find it by.
    [[nodiscard]] bool exists() const;

    /// Does what the arguments ask for; nothing at all for a start in the background.
    [[nodiscard]] Outcome handOver(const DesktopArguments& arguments, const VerbSource& source);

    /// Gives the link over; what becomes of it comes later.
    [[nodiscard]] Outcome open(const QString& url);

    /// Waits for what became of a link that was given over: a sentence, "" if there is nothing to
    /// tell.
    [[nodiscard]] std::expected<QString, QString> outcomeOf(const QString& url);

    /// The previews that are open there, if only in this run.
    [[nodiscard]] std::expected<QList<Preview>, QString> openPreviews();
    [[nodiscard]] Outcome switchPreview(const SwitchPreview& command);

    struct SelfTestRefusal {
        QString sentence;
        bool isBusy = false; ///< it tests itself already
    };
    /// Has it test itself, until this connection ends.
    [[nodiscard]] std::expected<void, SelfTestRefusal> beginSelfTest();
    /// Waits for the check of that number, counted from 0; nothing at the end of the test.
    [[nodiscard]] std::expected<std::optional<ReportedCheck>, QString> nextSelfCheck(int number);
    /// No check takes longer.
    static constexpr std::chrono::milliseconds checkLimit{90'000};

  private:
    [[nodiscard]] Outcome call(const QString& method, const QVariantList& arguments);
    [[nodiscard]] QDBusMessage ask(const QString& interface, const QString& method,
                                   const QVariantList& arguments,
                                   std::chrono::milliseconds longest);
    [[nodiscard]] Outcome quit();

    QDBusConnection m_bus;
};

} // namespace vorq
