#pragma once

#include "shell/panel/AttachableNotes.h"
#include "shell/panel/AttachmentList.h"
#include "shell/panel/PanelAnnouncer.h"
#include "shell/panel/PanelSelectionBridge.h"
#include "shell/panel/PanelSignIn.h"
#include "support/async/TaskSlot.h"

#include <QAbstractItemModel>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>

namespace vorq {

class Clock;
class VorqAppState;

/// What the panel shows beside its messages, and what it does with what the user enters: the draft
/// and its attachments, the rules of sending, the attach tray. Main thread only.
class PanelViewModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString prompt READ prompt WRITE setPrompt NOTIFY promptChanged)
    Q_PROPERTY(vorq::AttachmentList* attachments READ attachmentList CONSTANT)
    Q_PROPERTY(vorq::AttachableNotes* attachableNotes READ attachableNotes CONSTANT)
    Q_PROPERTY(vorq::PanelSelectionBridge* selection READ selection CONSTANT)
    Q_PROPERTY(vorq::PanelSignIn* signIn READ signIn CONSTANT)
    Q_PROPERTY(QAbstractItemModel* messages READ messages CONSTANT)
    Q_PROPERTY(bool showAttachTray READ showAttachTray WRITE setShowAttachTray NOTIFY
                   showAttachTrayChanged)
    Q_PROPERTY(vorq::PanelViewModel::AttachTrayMode attachTrayMode READ attachTrayMode WRITE
                   setAttachTrayMode NOTIFY attachTrayModeChanged)
    Q_PROPERTY(bool canSend READ canSend NOTIFY canSendChanged)
    Q_PROPERTY(QString promptPlaceholder READ promptPlaceholder NOTIFY promptPlaceholderChanged)
    Q_PROPERTY(bool isResponding READ isResponding NOTIFY respondingChanged)
    Q_PROPERTY(QString workLabel READ workLabel NOTIFY workLabelChanged)
    /// A saved chat was loaded and the view has not shown it yet: it comes in at once, at its end.
    Q_PROPERTY(bool isRestoringHistory READ isRestoringHistory NOTIFY respondingChanged)
    Q_PROPERTY(bool promptBounce READ promptBounce NOTIFY promptBounceChanged)
    /// Whether a captured text waits for the user's word, since it reads like a secret, and the
    /// name of the application that it is from, "" if unknown. The text itself is not shown.
    Q_PROPERTY(bool isHolding READ isHolding NOTIFY heldChanged)
    Q_PROPERTY(QString heldFrom READ heldFrom NOTIFY heldChanged)
    /// What went wrong or is missing, as a sentence; "" for nothing.
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)

  public:
    enum class AttachTrayMode { Root, Notes };
    Q_ENUM(AttachTrayMode)

    /// All must outlive the view model. Without a local sign-in the panel offers none.
    PanelViewModel(VorqAppState& state, Clock& clock, LocalSignIn* localSignIn = nullptr);
    ~PanelViewModel() override;

    [[nodiscard]] const QString& prompt() const { return m_prompt; }
    [[nodiscard]] AttachmentList& attachments() { return m_attachments; }
    [[nodiscard]] AttachmentList* attachmentList() { return &m_attachments; }
    [[nodiscard]] AttachableNotes* attachableNotes() { return &m_attachableNotes; }
    [[nodiscard]] PanelSelectionBridge* selection() { return &m_selection; }
    [[nodiscard]] PanelSignIn* signIn() { return &m_signIn; }
    [[nodiscard]] QAbstractItemModel* messages() const;
    [[nodiscard]] bool showAttachTray() const { return m_showAttachTray; }
    [[nodiscard]] AttachTrayMode attachTrayMode() const { return m_attachTrayMode; }
    [[nodiscard]] bool canSend() const;
    [[nodiscard]] QString promptPlaceholder() const;
    [[nodiscard]] bool isResponding() const;
    [[nodiscard]] QString workLabel() const;
    [[nodiscard]] bool isRestoringHistory() const;
    [[nodiscard]] bool promptBounce() const { return m_promptBounce; }
    [[nodiscard]] bool isHolding() const;
    [[nodiscard]] QString heldFrom() const;
    [[nodiscard]] const QString& notice() const { return m_notice; }

    void setPrompt(const QString& prompt);
    void setShowAttachTray(bool shown);
    void setAttachTrayMode(AttachTrayMode mode);

    /// Closes what is open over the conversation, the innermost thing first; false if nothing is.
    bool closeInnermost();

    /// Sends the draft. Without an account nothing is sent and nothing lost.
    Q_INVOKABLE void send();

    /// Sends a label of a follow-up, leaving the draft alone.
    Q_INVOKABLE void submitLabel(const QString& label);

    /// Runs the turn of a failed reply again, leaving the draft alone.
    Q_INVOKABLE void retry(const QUuid& failedReply);

    Q_INVOKABLE void stopPanelResponse();

    /// Sends what is held. Without an account nothing is sent, and it goes on being held.
    Q_INVOKABLE void sendHeld();
    Q_INVOKABLE void discardHeld();

    Q_INVOKABLE void ensurePanelGreeting();

    /// The view shows the saved chat now.
    Q_INVOKABLE void historyRestored();

    /// Puts the prompt sent last into an empty draft; false if the draft is not empty or nothing
    /// was sent.
    Q_INVOKABLE bool recallLastPrompt();

    /// An excerpt to ask more about, as a clip; it takes the place of the one before.
    void addDeepenSelection(const QString& excerpt);

    /// Reads the files off this thread; each becomes a clip as it is read, or a notice.
    Q_INVOKABLE void attachFiles(const QList<QUrl>& files);

    /// Takes files or a picture from the clipboard; false if it holds neither.
    Q_INVOKABLE bool attachFromClipboard();

    /// Takes an encoded picture, as another program hands it over; false if it is none.
    Q_INVOKABLE bool attachPicture(const QByteArray& bytes);

    Q_INVOKABLE void removeAttachment(int row);
    Q_INVOKABLE void copyText(const QString& text) const;

    /// Copies the last reply, as much of it as there is; false, and the clipboard as it was, if
    /// there is none. The greeting is no reply.
    Q_INVOKABLE bool copyLastReply() const;

    /// Opens a web address in the user's browser; any other kind of address is left alone.
    Q_INVOKABLE void openLink(const QString& address) const;

  signals:
    void promptChanged();
    void showAttachTrayChanged();
    void attachTrayModeChanged();
    void canSendChanged();
    void promptPlaceholderChanged();
    void respondingChanged();
    void workLabelChanged();
    void promptBounceChanged();
    void heldChanged();
    void noticeChanged();

    /// What a screen reader should say.
    void announced(const QString& sentence);

    /// The user tried to send without an account: the tray should call attention.
    void attentionWanted(bool signedIn);
    /// The draft has gone out.
    void composerSent();
    /// The user wants to choose files; a list of types, or pictures alone.
    void filesWanted(bool picturesOnly);
    /// The prompt should take the keyboard.
    void focusPromptWanted();

  private:
    void connectState();
    void takePermissions();
    void announceHeld();
    [[nodiscard]] bool mayTalk() const;
    void bounce();
    void dispatch();
    void clearSent(const std::optional<QUuid>& studiedBefore);
    void syncStudyNoteClip();
    [[nodiscard]] bool isStudyClip(const PromptAttachment& attachment) const;
    void leaveStudyWithItsClip();
    void adviseOnNothingCaptured(const QString& application);
    void attachFile(const QString& path);
    static QCoro::Task<> loadFile(QPointer<PanelViewModel> self, QString path);
    void attachImage(const QImage& image, const QString& name);
    void setNotice(const QString& sentence);

    VorqAppState& m_state;
    Clock& m_clock;
    AttachmentList m_attachments;
    AttachableNotes m_attachableNotes;
    PanelSelectionBridge m_selection;
    PanelAnnouncer m_announcer;
    PanelSignIn m_signIn;
    QString m_prompt;
    QString m_lastPrompt;
    QString m_notice;
    QSet<QString> m_knownToShowNothing; // applications of which the user was told
    bool m_showAttachTray = false;
    AttachTrayMode m_attachTrayMode = AttachTrayMode::Root;
    bool m_promptBounce = false;
    std::optional<QUuid> m_studyClip; // the note whose clip is among the attachments
    bool m_studyClipWasSent = false;  // then it stays, and is nothing to send by itself
    TaskSlot m_bounceTask;
};

} // namespace vorq
