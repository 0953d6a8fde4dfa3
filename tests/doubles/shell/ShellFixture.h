#pragma once

#include "backend/account/PendingSignIn.h"
#include "doubles/panel/ConversationFixture.h"
#include "doubles/shell/LogLines.h"
#include "doubles/shell/ScriptedPanelPresence.h"
#include "platform/testing/ScriptedHotKeys.h"
#include "platform/testing/ScriptedLoginItem.h"
#include "platform/testing/ScriptedWorkspace.h"
#include "shell/application/AppDelegate.h"
#include "shell/application/ApplicationHost.h"

#include <QUrl>

namespace vorq {

class ScriptedHost final : public ApplicationHost {
  public:
    explicit ScriptedHost(CallList& calls) : m_calls(calls) {}
    bool active = false;
    bool userIsBusy = false;
    Alert lastAlert;
    std::function<void(qsizetype button)> answer;

    void becomeAccessory() override { m_calls += "accessory"; }
    void installApplicationIcon() override { m_calls += "application icon"; }
    [[nodiscard]] bool isActive() const override { return active; }
    [[nodiscard]] bool isUserBusy() override { return userIsBusy; }
    void show(const Alert& alert, std::function<void(qsizetype)> chosen) override {
        m_calls += "alert";
        lastAlert = alert;
        answer = std::move(chosen);
    }
    void terminate() override { m_calls += "terminate"; }
    void terminateAndDelete() override { m_calls += "terminate and delete"; }

  private:
    CallList& m_calls;
};

class ScriptedStatusItem final : public StatusItem {
  public:
    explicit ScriptedStatusItem(CallList& calls) : m_calls(calls) {}
    QStringList notices;
    std::set<HotKeyAction> hotKeys;
    bool offersNotes = false;
    NoteAdvice noteAdvice;
    BackendAtLoginEntry backend;
    QString watchStatus;
    QStringList sessionLimits;
    bool inTray = true;
    bool callsForAttention = false;
    bool reducesMotion = false;

    void installStatusItem() override { m_calls += "status item"; }
    void bindAppState(VorqAppState&) override { m_calls += "status item bound"; }
    void setHotKeyNotices(const QStringList& lines) override { notices = lines; }
    void setHotKeys(const std::set<HotKeyAction>& registered) override { hotKeys = registered; }
    void setOffersNotes(bool offers) override { offersNotes = offers; }
    void setNoteAdvice(const NoteAdvice& advice) override { noteAdvice = advice; }
    void setBackendAtLogin(const BackendAtLoginEntry& entry) override { backend = entry; }
    void setWatchStatus(const QString& status) override { watchStatus = status; }
    void setSessionLimits(const QStringList& reasons) override { sessionLimits = reasons; }
    [[nodiscard]] bool isInTray() const override { return inTray; }
    void openMenu() override { m_calls += "menu"; }
    void flashStatusImage(StatusImage image) override {
        m_calls += image == StatusImage::Check ? "flash check" : "flash fail";
    }
    void startAttention() override {
        m_calls += "attention";
        callsForAttention = true;
    }
    void stopAttention() override {
        m_calls += "no attention";
        callsForAttention = false;
    }
    [[nodiscard]] bool isCallingForAttention() const override { return callsForAttention; }
    void chimeSignIn() override { m_calls += "chime"; }
    void setReducesMotion(bool reduces) override { reducesMotion = reduces; }

  private:
    CallList& m_calls;
};

class ScriptedNotes final : public NoteCaptureFlow {
  public:
    bool available = true;
    bool succeeds = true;
    QString message;
    QString whyNot;
    bool isHolding = false;
    std::vector<std::pair<std::optional<ProcessId>, QString>> saves;

    [[nodiscard]] bool isAvailable() const override { return available; }
    QCoro::Task<bool> saveNoteFromSelection(std::optional<ProcessId> sourcePID,
                                            QString frontBundleID, bool requireBrowser,
                                            std::stop_token) override {
        EXPECT_FALSE(requireBrowser);
        saves.emplace_back(sourcePID, frontBundleID);
        co_return succeeds;
    }
    QCoro::Task<bool> pushAppleNoteDraft(std::stop_token) override { co_return succeeds; }
    [[nodiscard]] QString libraryMessage() const override { return message; }
    [[nodiscard]] QString failure() const override { return whyNot; }
    [[nodiscard]] bool holdsText() const override { return isHolding; }
    QCoro::Task<bool> saveHeldText(std::stop_token) override {
        isHolding = !succeeds;
        co_return succeeds;
    }
    void discardHeldText() override { isHolding = false; }
};

class ScriptedSignIn final : public PendingSignIn {
  public:
    bool pending = false;
    QList<QUrl> finished;
    std::optional<RunningApplication> browser;

    [[nodiscard]] bool isPending() const override { return pending; }
    void finish(const QUrl& url) override {
        finished += url;
        pending = false;
    }
    [[nodiscard]] std::optional<RunningApplication> takeBrowserApplication() override {
        return std::exchange(browser, std::nullopt);
    }
};

/// A whole shell over scripted ports. Process 1 is Vorq, 7 an editor, 9 a browser.
class ShellFixture : public ConversationFixture {
  protected:
    ShellFixture();

    /// Launches without opening a menu, and binds the state.
    void launch();

    void press(std::uint32_t number, std::uint32_t signature = hotKeySignature);

    static constexpr ProcessId self = 1;
    static constexpr ProcessId editor = 7;
    static constexpr ProcessId browser = 9;

    CallList m_calls;
    LogLines m_log;
    ScriptedHost m_host{m_calls};
    ScriptedWorkspace m_workspace;
    ScriptedHotKeys m_hotKeys;
    ScriptedLoginItem m_loginItem;
    ScriptedNotes m_notes;
    ScriptedSignIn m_signIn;
    ScriptedStatusItem m_statusItem{m_calls};
    /// What a shell beside the one under test can be made of.
    [[nodiscard]] AppDelegate::Ports ports();

    AppDelegate m_delegate;
};

} // namespace vorq
