#pragma once

#include "platform/Clock.h"
#include "platform/Workspace.h"
#include "shell/hotkeys/HotKeyTable.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>
#include <set>
#include <utility>

namespace vorq {

/// The application that was in front when a hot key was pressed, or a command given.
struct HotKeySource {
    std::optional<ProcessId> process;
    QString bundleIdentifier; ///< "" if unknown

    bool operator==(const HotKeySource&) const = default;
};

/// Registers the hot keys of Vorq and turns presses into actions. Main thread only.
class HotKeyHandler final : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object.
    HotKeyHandler(GlobalHotKeys& hotKeys, Workspace& workspace, Clock& clock,
                  QObject* parent = nullptr);
    ~HotKeyHandler() override;

    /// One that fails is logged and does not stop the others. It is tried again now and then.
    void registerHotKeys();

    /// Registers those that another program held, if it has let them go.
    void retryMissing();

    void unregisterHotKeys();

    /// Whether there are notes for hot keys to file. The user is not bothered with keys that do
    /// nothing.
    void setOffersNotes(bool offersNotes) { m_offersNotes = offersNotes; }

    /// Whether the writing tools are there. Their key is registered only while they are.
    void setOffersWriting(bool offersWriting);

    /// For the user: the hot keys that could not be registered, and what to do instead.
    [[nodiscard]] QStringList notices() const;

    /// Those that reach the program.
    [[nodiscard]] std::set<HotKeyAction> registered() const;

    /// Those that the user is to have, whether they could be registered or not.
    [[nodiscard]] std::set<HotKeyAction> offered() const;

    /// Whether a program can have hot keys here, as far as was tried.
    [[nodiscard]] bool canRegister() const { return m_hasHandler; }

    /// While there is one, presses are told to it at once and do nothing else, as in a test of the
    /// keys.
    using Diversion = std::function<void(HotKeyAction action)>;
    void setDiversion(Diversion diversion) { m_diversion = std::move(diversion); }

  signals:
    /// On a later turn of the event loop than the press. The source is that of the press.
    void activated(vorq::HotKeyAction action, vorq::HotKeySource source);

    void noticesChanged();

  private:
    [[nodiscard]] bool registerEntry(const HotKeyEntry& entry);
    void retryLater();
    [[nodiscard]] bool isWanted(const HotKeyEntry& entry) const;
    [[nodiscard]] bool isOffered(const HotKeyEntry& entry) const;
    void takePress(HotKeyId id);
    void takeAvailability(HotKeyId id, bool isAvailable);
    [[nodiscard]] HotKeySource sourceNow() const;

    GlobalHotKeys& m_hotKeys;
    Workspace& m_workspace;
    Clock& m_clock;
    bool m_isRegistered = false;
    bool m_hasHandler = true;
    bool m_offersNotes = true;
    bool m_offersWriting = false;
    std::set<HotKeyAction> m_missing;
    Diversion m_diversion;
    std::optional<Clock::TimerId> m_retry;
};

} // namespace vorq
