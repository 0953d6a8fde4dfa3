#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace vorq {

class VorqAppState;

/// Where the user is in the window of the settings, and of the Hub once that is open. What is
/// entered on a page and not saved is not left without a question. Main thread only.
class SettingsNavigation final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isSignedIn READ isSignedIn NOTIFY changed)
    Q_PROPERTY(bool hasHub READ hasHub NOTIFY changed)
    Q_PROPERTY(SetupTab selectedTab READ selectedTab NOTIFY changed)
    Q_PROPERTY(SettingsPane settingsPane READ settingsPane NOTIFY changed)
    /// The page of the Hub: "notes", "chats", "tasks", "trackers" or "ai".
    Q_PROPERTY(QString hubSegment READ hubSegment NOTIFY changed)
    Q_PROPERTY(bool hubTapeExpanded READ hubTapeExpanded WRITE setHubTapeExpanded NOTIFY changed)
    /// The user is about to leave what is not saved, and is asked.
    Q_PROPERTY(bool asksToDiscard READ asksToDiscard NOTIFY changed)

  public:
    enum class SetupTab { Library, Settings };
    Q_ENUM(SetupTab)
    enum class SettingsPane { List, Profile, Privacy, Appearance, PanelLook, CustomizePanel };
    Q_ENUM(SettingsPane)

    /// What a page holds of the user's.
    struct Entries {
        std::function<bool(SettingsPane)> isUnsaved;
        std::function<void(SettingsPane)> forget;
    };

    /// The state must outlive the navigation.
    SettingsNavigation(VorqAppState& state, Entries entries);

    [[nodiscard]] bool isSignedIn() const;
    [[nodiscard]] bool hasHub() const;
    [[nodiscard]] SetupTab selectedTab() const { return m_tab; }
    [[nodiscard]] SettingsPane settingsPane() const { return m_pane; }
    [[nodiscard]] QString hubSegment() const;
    [[nodiscard]] bool hubTapeExpanded() const { return m_isTapeExpanded; }
    void setHubTapeExpanded(bool isExpanded);
    [[nodiscard]] bool asksToDiscard() const { return bool(m_pending); }

    /// Without an account there is no page of it.
    Q_INVOKABLE void open(vorq::SettingsNavigation::SettingsPane pane);
    /// To the list.
    Q_INVOKABLE void back() { open(SettingsPane::List); }
    Q_INVOKABLE void showSettings();
    Q_INVOKABLE void showHub(const QString& segment);
    /// The user wants the window to close.
    Q_INVOKABLE void requestClose();
    /// The user wants Vorq to end.
    void requestQuit();

    /// The answers to the question.
    Q_INVOKABLE void discard();
    Q_INVOKABLE void keep();

  signals:
    void changed();
    void closeAllowed();
    void quitAllowed();

  private:
    void leave(std::function<void()> go);
    void follow();
    void show(SetupTab tab, SettingsPane pane);

    VorqAppState& m_state;
    Entries m_entries;
    SetupTab m_tab = SetupTab::Settings;
    SettingsPane m_pane = SettingsPane::List;
    bool m_isTapeExpanded = true;
    std::function<void()> m_pending; // what waits for the answer
};

} // namespace vorq
