#pragma once

#include "platform/Workspace.h"
#include "shell/HotKeyTable.h"

#include <QObject>
#include <QStringList>

#include <optional>
#include <set>

namespace vorq {

/// The application that was in front when a hot key was pressed, or a command given.
struct HotKeySource {
    std::optional<Workspace::ProcessId> process;
    QString bundleIdentifier; ///< "" if unknown

    bool operator==(const HotKeySource&) const = default;
};

/// Registers the hot keys of Vorq and turns presses into actions. Main thread only.
class HotKeyHandler final : public QObject {
    Q_OBJECT

  public:
    /// Both must outlive this object.
    HotKeyHandler(GlobalHotKeys& hotKeys, Workspace& workspace, QObject* parent = nullptr);

    /// One that fails is logged and does not stop the others.
    void registerHotKeys();

    void unregisterHotKeys();

    /// What the user should know of keys that are not to be had, and what to do instead.
    [[nodiscard]] QStringList notices() const;

  signals:
    /// On a later turn of the event loop than the press. The source is that of the press.
    void activated(vorq::HotKeyAction action, vorq::HotKeySource source);

    void noticesChanged();

  private:
    void registerHotKey(const HotKeyEntry& entry);
    void takePress(HotKeyId id);
    void takeAvailability(HotKeyId id, bool isAvailable);
    [[nodiscard]] HotKeySource sourceNow() const;

    GlobalHotKeys& m_hotKeys;
    Workspace& m_workspace;
    bool m_hasHandler = true;
    std::set<HotKeyAction> m_missing;
};

} // namespace vorq
