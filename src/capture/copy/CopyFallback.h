#pragma once

#include "capture/copy/ClipboardLoan.h"
#include "capture/copy/SourceFocus.h"
#include "capture/selection/CopyShortcut.h"
#include "support/async/TaskSlot.h"
#include "support/async/TurnQueue.h"

#include <QObject>

namespace vorq {

/// Captures by sending the application its copy shortcut. The clipboard holds afterwards what it
/// held before, and the keyboard goes back to where it was. Nothing is sent where the clipboard
/// could not be given back, the application is not in front, or no chord of it is safe. One copy at
/// a time; others wait. Main thread only.
class CopyFallback final : public QObject, public CopyShortcut {
    Q_OBJECT

  public:
    using Services = ClipboardLoan::Services;

    /// The services must outlive this object and what it has under way. The turns are of all who
    /// borrow the clipboard.
    CopyFallback(const Services& services, TurnQueue& turns)
        : m_services(services), m_turns(turns) {}

    [[nodiscard]] bool canCopyFrom(std::optional<ProcessId> source) const override;

    QCoro::Task<QString> captureFromCopyShortcutFast(std::optional<ProcessId> source,
                                                     std::stop_token stop) override;

  private:
    // What is copied from, and how.
    struct Target {
        ProcessId process = 0;
        KeyChord chord;
    };

    [[nodiscard]] std::optional<Target> targetOf(std::optional<ProcessId> source,
                                                 const SourceFocus& focus) const;
    QCoro::Task<QString> copyFrom(Target target, std::stop_token stop);
    static QCoro::Task<> waitOutModifiers(SourceFocus& focus, KeyPoster& keys,
                                          std::stop_token stop);
    QCoro::Task<bool> post(Target target, SourceFocus& focus, ClipboardLoan& loan,
                           std::stop_token stop);
    static QCoro::Task<> awaitAnswer(Clock& clock, const ClipboardLoan& loan);
    static QCoro::Task<QString> answer(Clock& clock, const ClipboardLoan& loan);

    Services m_services;
    TurnQueue& m_turns;
    // The last one, as long as a late answer to it may come.
    std::weak_ptr<ClipboardLoan> m_last;
    TaskSlot m_guard;
};

} // namespace vorq
