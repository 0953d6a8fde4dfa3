#pragma once

#include "shell/panel/AttachTrayState.h"
#include "shell/panel/AttachableNotes.h"
#include "shell/panel/AttachmentIntake.h"
#include "shell/panel/AttachmentList.h"
#include "shell/panel/ClipAnnouncer.h"
#include "shell/panel/ClipLoader.h"
#include "shell/panel/HeldOffer.h"
#include "shell/panel/PanelAdvice.h"
#include "shell/panel/PanelAnnouncer.h"
#include "shell/panel/PanelOutlet.h"
#include "shell/panel/PanelSelectionBridge.h"
#include "shell/panel/PanelSignIn.h"
#include "shell/panel/StudyClip.h"
#include "shell/panel/WaitingPrompt.h"
#include "support/async/TaskSlot.h"

#include <QAbstractItemModel>
#include <QObject>
#include <QString>
#include <QUuid>

namespace vorq {

class AttachmentReader;
class Clock;
class Pasteboard;
class VorqAppState;
struct OutgoingClips;

/// What the panel shows beside its messages, and what it does with what the user enters: the draft
/// and its attachments, and the rules of sending. Main thread only.
class PanelViewModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString prompt READ prompt WRITE setPrompt NOTIFY promptChanged)
    Q_PROPERTY(vorq::AttachmentList* attachments READ attachmentList CONSTANT)
    Q_PROPERTY(vorq::AttachableNotes* attachableNotes READ attachableNotes CONSTANT)
    Q_PROPERTY(vorq::AttachmentIntake* intake READ intake CONSTANT)
    Q_PROPERTY(vorq::AttachTrayState* tray READ tray CONSTANT)
    Q_PROPERTY(vorq::WaitingPrompt* waiting READ waiting CONSTANT)
    Q_PROPERTY(vorq::HeldOffer* held READ held CONSTANT)
    Q_PROPERTY(vorq::PanelOutlet* outlet READ outlet CONSTANT)
    Q_PROPERTY(vorq::PanelSelectionBridge* selection READ selection CONSTANT)
    Q_PROPERTY(vorq::PanelSignIn* signIn READ signIn CONSTANT)
    Q_PROPERTY(QAbstractItemModel* messages READ messages CONSTANT)
    Q_PROPERTY(bool canSend READ canSend NOTIFY canSendChanged)
    Q_PROPERTY(QString promptPlaceholder READ promptPlaceholder NOTIFY promptPlaceholderChanged)
    Q_PROPERTY(bool isResponding READ isResponding NOTIFY respondingChanged)
    Q_PROPERTY(QString workLabel READ workLabel NOTIFY workLabelChanged)
    /// A saved chat was loaded and the view has not shown it yet: it comes in at once, at its end.
    Q_PROPERTY(bool isRestoringHistory READ isRestoringHistory NOTIFY respondingChanged)
    Q_PROPERTY(bool promptBounce READ promptBounce NOTIFY promptBounceChanged)
    /// What went wrong or is missing, as a sentence; "" for nothing.
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)

  public:
    /// All must outlive the view model. Without a local sign-in the panel offers none; without a
    /// pasteboard the toolkit is asked what is pasted.
    PanelViewModel(VorqAppState& state, Clock& clock, AttachmentReader& reader,
                   LocalSignIn* localSignIn = nullptr, Pasteboard* pasteboard = nullptr);
    ~PanelViewModel() override;

    [[nodiscard]] const QString& prompt() const { return m_prompt; }
    [[nodiscard]] AttachmentList& attachments() { return m_attachments; }
    [[nodiscard]] AttachmentList* attachmentList() { return &m_attachments; }
    [[nodiscard]] AttachableNotes* attachableNotes() { return &m_attachableNotes; }
    [[nodiscard]] AttachmentIntake* intake() { return &m_intake; }
    [[nodiscard]] AttachTrayState* tray() { return &m_tray; }
    [[nodiscard]] WaitingPrompt* waiting() { return &m_waiting; }
    [[nodiscard]] HeldOffer* held() { return &m_held; }
    [[nodiscard]] PanelOutlet* outlet() { return &m_outlet; }
    [[nodiscard]] PanelSelectionBridge* selection() { return &m_selection; }
    [[nodiscard]] PanelSignIn* signIn() { return &m_signIn; }
    [[nodiscard]] QAbstractItemModel* messages() const;
    [[nodiscard]] bool canSend() const;
    [[nodiscard]] QString promptPlaceholder() const;
    [[nodiscard]] bool isResponding() const;
    [[nodiscard]] QString workLabel() const;
    [[nodiscard]] bool isRestoringHistory() const;
    [[nodiscard]] bool promptBounce() const { return m_promptBounce; }
    [[nodiscard]] const QString& notice() const { return m_advice.sentence(); }

    void setPrompt(const QString& prompt);

    /// Closes what is open over the conversation, the innermost thing first; false if nothing is.
    bool closeInnermost();

    /// Sends the draft, once its clips are loaded; those that cannot go along stay attached.
    /// Without an account, or with a clip that failed, nothing is sent and nothing lost.
    Q_INVOKABLE void send();

    /// Sends a label of a follow-up, leaving the draft alone.
    Q_INVOKABLE void submitLabel(const QString& label);

    /// Runs the turn of a failed reply again, leaving the draft alone.
    Q_INVOKABLE void retry(const QUuid& failedReply);

    Q_INVOKABLE void stopPanelResponse();

    Q_INVOKABLE void openSettings() { emit settingsWanted(); }

    /// Sends what is held. Without an account nothing is sent, and it goes on being held.
    Q_INVOKABLE void sendHeld();

    Q_INVOKABLE void ensurePanelGreeting();

    /// The view shows the saved chat now.
    Q_INVOKABLE void historyRestored();

    /// Puts the prompt sent last into an empty draft; false if the draft is not empty or nothing
    /// was sent.
    Q_INVOKABLE bool recallLastPrompt();

    /// An excerpt to ask more about, as a clip; it takes the place of the one before.
    void addDeepenSelection(const QString& excerpt);

  signals:
    void promptChanged();
    void canSendChanged();
    void promptPlaceholderChanged();
    void respondingChanged();
    void workLabelChanged();
    void promptBounceChanged();
    void noticeChanged();

    /// What a screen reader should say.
    void announced(const QString& sentence);

    /// The user tried to send without an account: the tray should call attention.
    void attentionWanted(bool signedIn);
    /// The draft has gone out.
    void composerSent();
    /// The user wants to see the settings.
    void settingsWanted();
    /// The user wants to choose files; a list of types, or pictures alone.
    void filesWanted(bool picturesOnly);
    /// The prompt should take the keyboard.
    void focusPromptWanted();

  private:
    void connectState();
    void connectParts();
    [[nodiscard]] bool mayTalk() const;
    void bounce();
    void followPaste(bool hasAnswered);
    [[nodiscard]] bool areClipsReady(const OutgoingClips& going);
    void followFailed();
    void dispatch(const OutgoingClips& going);
    void clearSent(const OutgoingClips& gone, const std::optional<QUuid>& studiedBefore);
    void sayWhatIsLeft();

    VorqAppState& m_state;
    Clock& m_clock;
    AttachmentList m_attachments;
    ClipLoader m_clipLoader;
    ClipAnnouncer m_clipAnnouncer;
    WaitingPrompt m_waiting;
    AttachableNotes m_attachableNotes;
    AttachmentIntake m_intake;
    AttachTrayState m_tray;
    StudyClip m_studyClip;
    HeldOffer m_held;
    PanelOutlet m_outlet;
    PanelAdvice m_advice;
    PanelSelectionBridge m_selection;
    PanelAnnouncer m_announcer;
    PanelSignIn m_signIn;
    QString m_prompt;
    QString m_lastPrompt;
    bool m_promptBounce = false;
    bool m_sendsOncePasted = false;
    TaskSlot m_bounceTask;
};

} // namespace vorq
