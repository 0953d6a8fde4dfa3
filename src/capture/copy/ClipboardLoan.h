#pragma once

#include "platform/Clock.h"
#include "platform/Workspace.h"
#include "platform/copying/KeyPoster.h"
#include "platform/copying/Pasteboard.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>
#include <stop_token>

namespace vorq {

/// The user's clipboard while another application writes to it or reads from it for us. What it
/// held comes back as it was, form by form, unless somebody else has written meanwhile. Main thread
/// only.
class ClipboardLoan {
  public:
    /// The clipboard of an owner that has not handed out all by then is left alone.
    static constexpr std::chrono::milliseconds snapshotLimit{1000};
    static constexpr std::chrono::milliseconds textLimit{1000};
    /// For so long an application may still answer a chord, or answer it once more.
    static constexpr std::chrono::milliseconds lateLimit{2000};

    struct Services {
        Clock& clock;
        Pasteboard& pasteboard;
        KeyPoster& keys;
        Workspace& workspace;
    };

    /// The services must outlive this object and what it has under way.
    ClipboardLoan(const Services& services, ProcessId process)
        : m_services(services), m_process(process) {}

    /// Notes what the clipboard holds. False if that cannot be had whole: it could not be given
    /// back then, and must be left alone.
    QCoro::Task<bool> begin(std::stop_token stop);

    /// Whether anyone has written since, but for us.
    [[nodiscard]] bool isWritten() const;
    /// Whether it was written at all, by us too.
    [[nodiscard]] bool wasWritten() const;
    /// Whether the application was the last one.
    [[nodiscard]] bool isWrittenByProcess() const;

    /// The text that it holds now; "" if that takes too long.
    QCoro::Task<QString> text() const;

    /// Lends it contents of ours. False if somebody else wrote before.
    QCoro::Task<bool> put(PasteboardContents contents);

    /// Gives back what it held, if what it holds now is ours or the application's.
    QCoro::Task<> giveBack();

    /// To be called right after a chord was sent: notes from then on whether the user uses the
    /// application, who may have it copy.
    void followUse();

    /// Gives it back again if the application has written after all, unless the user has used it
    /// since the chord.
    QCoro::Task<> giveBackLate();

    /// Does that whenever the application writes, until anybody else wrote or the time for it is
    /// over. The loan lives as long.
    static QCoro::Task<> guard(std::shared_ptr<ClipboardLoan> loan, std::stop_token stop);

  private:
    void noteUse();
    [[nodiscard]] bool mayReplace(const Pasteboard::Change& change) const;

    Services m_services;
    ProcessId m_process;
    PasteboardContents m_contents;
    std::uint64_t m_begin = 0;
    std::uint64_t m_base = 0; // the change after which nobody but us has written
    bool m_isLent = false;
    bool m_isInFront = false; // the application, when that was last looked at
    bool m_isUsed = false;    // by the user, since the chord
    QObject m_follower;       // of the workspace
};

} // namespace vorq
