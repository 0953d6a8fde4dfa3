#pragma once

#include "shell/panel/PanelSignIn.h"
#include "writing/difference/WordDifference.h"

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QString>

#include <vector>

namespace vorq {

class WritingToolsModel;

/// What the card beside a selection shows of a session of the writing tools, or instead of one a
/// sentence on why there is none. Main thread only.
class WritingCard final : public QObject {
    Q_OBJECT
    /// Why nothing can be rewritten; "" while a session is on.
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(QString suggestion READ suggestion NOTIFY suggestionChanged)
    /// What is different from the original, for who hears it.
    Q_PROPERTY(QString spokenDifference READ spokenDifference NOTIFY suggestionChanged)
    Q_PROPERTY(
        bool showsDifference READ showsDifference WRITE setShowsDifference NOTIFY suggestionChanged)
    /// Of the takes seen so far the one on show, from 1; 0 for none of them.
    Q_PROPERTY(int takeNumber READ takeNumber NOTIFY suggestionChanged)
    Q_PROPERTY(int takeCount READ takeCount NOTIFY suggestionChanged)
    Q_PROPERTY(QString draft READ draft WRITE setDraft NOTIFY draftChanged)
    Q_PROPERTY(bool isWorking READ isWorking NOTIFY changed)
    Q_PROPERTY(bool isReplacing READ isReplacing NOTIFY changed)
    /// What is on show stands in the place of the selection.
    Q_PROPERTY(bool isReplaced READ isReplaced NOTIFY changed)
    /// Something was replaced and not taken back.
    Q_PROPERTY(bool hasReplaced READ hasReplaced NOTIFY changed)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(bool canReplace READ canReplace NOTIFY changed)
    Q_PROPERTY(bool canSubmit READ canSubmit NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)
    /// Of the enumeration WritingToolAction; -1 for none.
    Q_PROPERTY(int activeAction READ activeAction NOTIFY changed)
    Q_PROPERTY(bool isSignedIn READ isSignedIn NOTIFY changed)
    Q_PROPERTY(vorq::PanelSignIn* signIn READ signIn CONSTANT)
    Q_PROPERTY(bool arrowPointsUp READ arrowPointsUp NOTIFY placed)
    /// From the left edge of the card.
    Q_PROPERTY(double tipX READ tipX NOTIFY placed)
    /// Around the card, for its shadow.
    Q_PROPERTY(int margin READ margin CONSTANT)
    /// The pointer is over the card.
    Q_PROPERTY(bool isHovered MEMBER m_isHovered NOTIFY hoverChanged)

  public:
    static constexpr int shadowMargin = 24;
    /// More of a text is not shown, though it is all replaced and copied.
    static constexpr qsizetype longestShown = 6000;

    /// All must outlive the card. Without a local sign-in there is none to offer.
    WritingCard(AccountSession& account, AccountSignIn& signIn, LocalSignIn* local);

    /// Why the last that was asked of a session did not come about; "" if it did.
    [[nodiscard]] static QString failureOf(const WritingToolsModel& session);

    /// Null for none; what is shown of the former goes.
    void setSession(WritingToolsModel* session);
    /// Ends what is shown of a session.
    void setNotice(const QString& sentence);
    void setPlace(bool pointsUp, double tipX);

    [[nodiscard]] const QString& notice() const { return m_notice; }
    [[nodiscard]] QString suggestion() const;
    [[nodiscard]] const QString& spokenDifference() const { return m_spoken; }
    [[nodiscard]] bool showsDifference() const { return m_showsDifference; }
    void setShowsDifference(bool shows);
    [[nodiscard]] int takeNumber() const;
    [[nodiscard]] int takeCount() const;
    [[nodiscard]] QString draft() const;
    void setDraft(const QString& text);
    [[nodiscard]] bool isWorking() const;
    [[nodiscard]] bool isReplacing() const;
    [[nodiscard]] bool isReplaced() const;
    [[nodiscard]] bool hasReplaced() const;
    [[nodiscard]] bool canUndo() const;
    [[nodiscard]] bool canReplace() const;
    [[nodiscard]] bool canSubmit() const;
    [[nodiscard]] QString error() const;
    [[nodiscard]] int activeAction() const;
    [[nodiscard]] bool isSignedIn() const { return !m_signIn.isMissing(); }
    [[nodiscard]] PanelSignIn* signIn() { return &m_signIn; }
    [[nodiscard]] bool arrowPointsUp() const { return m_pointsUp; }
    [[nodiscard]] double tipX() const { return m_tipX; }
    [[nodiscard]] static int margin() { return shadowMargin; }
    [[nodiscard]] bool isHovered() const { return m_isHovered; }

    /// The suggestion for a Text of the styled format: as the difference from the original in these
    /// colours, or plain, as is chosen.
    Q_INVOKABLE [[nodiscard]] QString markup(const QColor& removed, const QColor& added) const;

    /// Does what the draft says; with an empty draft writes the suggestion over the selection.
    /// Nothing while nobody is signed in.
    Q_INVOKABLE void submit();
    Q_INVOKABLE void run(int action);
    Q_INVOKABLE void stop();
    Q_INVOKABLE void replace();
    Q_INVOKABLE void undo();
    /// Puts the suggestion on the clipboard. Needs a QGuiApplication.
    Q_INVOKABLE void copy();
    /// The next take seen before, or with -1 the one before. False if there is no other.
    Q_INVOKABLE bool showOtherTake(int steps);
    Q_INVOKABLE void dismiss() { emit dismissed(); }
    /// The writer has pressed into the field.
    Q_INVOKABLE void wantKeyboard() { emit keyboardWanted(); }

  signals:
    void changed();
    void suggestionChanged();
    void draftChanged();
    void placed();
    void hoverChanged();
    /// The field is to have the focus within the card.
    void focusPromptWanted();
    /// For a screen reader.
    void announced(const QString& words);
    void dismissed();
    void keyboardWanted();

  private:
    void listen();
    void compare();
    void tellOutcome();

    PanelSignIn m_signIn;
    QPointer<WritingToolsModel> m_session;
    QString m_notice;
    std::vector<DifferencePart> m_difference; // from the original to the suggestion
    QString m_spoken;
    bool m_showsDifference = true;
    QString m_lastError;
    bool m_pointsUp = true;
    double m_tipX = 0;
    bool m_isHovered = false;
};

} // namespace vorq
