#pragma once

#include "support/async/TaskSlot.h"
#include "writing/SelectionReplacer.h"
#include "writing/TakeHistory.h"
#include "writing/WritingSessionLog.h"
#include "writing/words/WordAltsLoader.h"
#include "writing/words/WordLooker.h"
#include "writing/words/WritingWordAlts.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QRectF>

#include <cstdint>
#include <expected>
#include <optional>
#include <vector>

namespace vorq {

class AccountSession;
class VorqAPIService;

/// A ready-made direction.
enum class WritingToolAction : std::uint8_t { Rephrase, Improve, Shorter };

/// "rephrase", "improve", "shorter".
[[nodiscard]] QString rawString(WritingToolAction action);

/// What a session is over, as it was when that opened, but for the words that were replaced since.
struct WritingSelection {
    /// As the application gave it, untrimmed.
    QString originalText;
    std::optional<ProcessId> sourcePID;
    std::optional<WindowId> window;
    std::optional<TextRange> selectedRange;
    /// In screen coordinates, as the frame is.
    std::optional<QPointF> clickPoint;
    QRectF selectionScreenFrame;
    bool selectionReliable = false;
};

/// A session of the writing tools: the writer gives a direction on a selection, the backend a
/// suggestion, and the accepted one is written over the selection in its application. "Again" and
/// "replace" are further words in the same prompt line. Main thread only.
class WritingToolsModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString suggestion READ suggestion NOTIFY suggestionChanged)
    Q_PROPERTY(QString draftPrompt READ draftPrompt WRITE setDraftPrompt NOTIFY draftPromptChanged)
    Q_PROPERTY(bool isWorking READ isWorking NOTIFY stateChanged)
    Q_PROPERTY(bool isReplacing READ isReplacing NOTIFY stateChanged)
    Q_PROPERTY(QString errorMessage READ errorLine NOTIFY stateChanged)
    Q_PROPERTY(bool replaceFailed READ replaceFailed NOTIFY stateChanged)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY stateChanged)
    Q_PROPERTY(bool canSubmit READ canSubmit NOTIFY stateChanged)
    Q_PROPERTY(int promptFocusToken READ promptFocusToken NOTIFY promptFocusTokenChanged)
    Q_PROPERTY(bool arrowPointsUp READ arrowPointsUp WRITE setArrowPointsUp NOTIFY stateChanged)

  public:
    struct Services {
        Clock& clock;
        VorqAPIService& api;
        AccountSession& account;
        SelectionReplacer& replacer;
    };

    /// The services must outlive this object and what it has under way.
    WritingToolsModel(const Services& services, const WritingSelection& selection,
                      QObject* parent = nullptr);

    [[nodiscard]] const WritingSelection& selection() const { return m_selection; }

    /// The rewrite on show, "" if there is none.
    [[nodiscard]] const QString& suggestion() const { return m_suggestion; }
    [[nodiscard]] const QString& draftPrompt() const { return m_draftPrompt; }
    void setDraftPrompt(const QString& text);
    [[nodiscard]] bool isWorking() const { return m_isWorking; }
    /// A replacement is under way, or one is being taken back.
    [[nodiscard]] bool isReplacing() const { return m_isReplacing; }
    [[nodiscard]] std::optional<WritingToolAction> activeAction() const { return m_activeAction; }
    [[nodiscard]] const std::optional<QString>& errorMessage() const { return m_errorMessage; }
    /// "" for none.
    [[nodiscard]] QString errorLine() const { return m_errorMessage.value_or(QString()); }
    /// The last replacement did not land; where more is known, the error message says it.
    [[nodiscard]] bool replaceFailed() const { return m_replaceFailed; }
    /// Grows by one each time that the prompt field is to have the focus again.
    [[nodiscard]] int promptFocusToken() const { return m_promptFocusToken; }
    [[nodiscard]] bool arrowPointsUp() const { return m_arrowPointsUp; }
    void setArrowPointsUp(bool pointsUp);
    /// The suggestion that stands in the place of the selection, "" while the original does.
    [[nodiscard]] const QString& standing() const { return m_standing.suggestion; }
    /// Whether something was replaced and not taken back.
    [[nodiscard]] bool hasReplaced() const { return !m_former.empty(); }
    [[nodiscard]] bool canUndo() const { return hasReplaced() && !m_isReplacing; }
    [[nodiscard]] bool canSubmit() const;

    [[nodiscard]] const TakeHistory& takes() const { return m_takes; }
    [[nodiscard]] const WritingSessionLog& log() const { return m_log; }
    [[nodiscard]] const std::optional<QString>& lastInstruction() const {
        return m_lastInstruction;
    }
    [[nodiscard]] WritingWordAlts& words() { return m_words; }
    [[nodiscard]] const WordAltsLoader& wordAltsLoader() const { return m_wordAltsLoader; }
    /// To find the words that have alternatives.
    [[nodiscard]] WordsSought wordsSought() const;

    /// Does what the draft says.
    Q_INVOKABLE void submitPrompt();
    /// Asks for what the action stands for, of the version on show if there is one. The draft
    /// stays.
    void runAction(WritingToolAction action);
    /// Asks the backend for a rewrite, in the place of what was asked before. The suggestion is
    /// written over the selection at once if so told.
    void requestRewrite(const QString& prompt, bool applyAfter);
    /// Ends what is asked, and shows the suggestion again that was on show before.
    Q_INVOKABLE void cancelRewrite();
    /// Writes the suggestion over the selection. Nothing cancels it.
    Q_INVOKABLE void replaceInApp();
    /// Puts back what the last replacement took the place of: again and again, up to the original.
    Q_INVOKABLE void undoReplace();
    /// Shows a take that was seen before: the next one, or with -1 the one before, round and round.
    Q_INVOKABLE void showOtherTake(int steps = 1);

    /// Asks for alternatives to single words, once, where a single word could be replaced at all.
    void loadWordAlts();
    /// The place of the selection, which was only guessed, has become known.
    void noteReliablePlacement();
    /// Something else is selected now, so no word is where it was.
    void forgetWordAlts();
    /// Puts the alternative in the place of its word, and of nothing else. False, and nothing is
    /// done, for an unknown one and while something is being replaced. Nothing cancels it.
    bool applyWordAlt(const QUuid& id);

    void record(const WritingToolsInteraction::Kind& kind);
    [[nodiscard]] QString sessionContextBlock() const { return m_log.contextBlock(); }

  signals:
    void suggestionChanged();
    void draftPromptChanged();
    void stateChanged();
    void promptFocusTokenChanged();

    void replaceStarted();
    void replaceFinished();
    /// After a replacement that landed.
    void replaced();
    /// After a word was: it has landed, and the selection is another by that.
    void wordReplaced(const vorq::WritingWordAlt& alt);
    /// After either was taken back.
    void undone();
    /// The selection is to go to the panel.
    void sendToVorq(const QString& text);
    /// The card's height may have changed.
    void contentChange();

  private:
    using Outcome = SelectionReplacer::Outcome;
    using Rewrite = std::expected<QString, QString>; // the error is a sentence

    struct Ask {
        QString prompt;
        QString instruction;
        bool applyAfter = false;
    };

    static QCoro::Task<> rewrite(QPointer<WritingToolsModel> self, Ask ask, std::stop_token stop);
    static QCoro::Task<std::optional<Rewrite>> askBackend(QPointer<WritingToolsModel> self, Ask ask,
                                                          std::stop_token stop);
    /// What stands, or stood, in the place of the selection.
    struct Version {
        SelectionReplacer::Target target;
        QString suggestion; // "" for the original
        WritingSelection selection = {};
        QList<WritingWordAlt> wordAlts = {};
        std::optional<WritingWordAlt> word = {}; // by which it was replaced, if not as a whole
    };

    static QCoro::Task<Outcome> write(QPointer<WritingToolsModel> self, QString text,
                                      SelectionReplacer::Target over);
    static QCoro::Task<> replace(QPointer<WritingToolsModel> self, Version next);
    static QCoro::Task<> replaceWord(QPointer<WritingToolsModel> self, WritingWordAlt alt);
    static QCoro::Task<> undo(QPointer<WritingToolsModel> self);

    void finishRewrite(const std::optional<Rewrite>& answer, bool applyAfter);
    void finishReplace(Outcome outcome, const Version& next);
    void finishWord(Outcome outcome, const WritingWordAlt& alt);
    void finishUndo(Outcome outcome);
    [[nodiscard]] bool canReplaceWords() const;
    [[nodiscard]] SelectionReplacer::Target targetOfWord(const WritingWordAlt& alt,
                                                         const QString& standing) const;
    [[nodiscard]] Version takeStanding();
    void beginReplacing();
    void applySuggestion();
    void setSuggestion(const QString& text);
    /// Shows the state as it is now, and gives the prompt field the focus.
    void announce();
    void announceContent();

    Services m_services;
    WritingSelection m_selection;
    Version m_standing;
    std::vector<Version> m_former; // the original first

    QString m_suggestion;
    QString m_suggestionBefore; // what was on show when the rewrite was asked for
    QString m_draftPrompt;
    bool m_isWorking = false;
    bool m_isReplacing = false;
    std::optional<WritingToolAction> m_activeAction;
    std::optional<QString> m_errorMessage;
    bool m_replaceFailed = false;
    int m_promptFocusToken = 0;
    bool m_arrowPointsUp = false;

    std::optional<QString> m_lastInstruction;
    TakeHistory m_takes;
    WritingSessionLog m_log;
    WritingWordAlts m_words;
    WordAltsLoader m_wordAltsLoader;
    TaskSlot m_rewriteTask;
    TaskSlot m_replaceTask;
};

} // namespace vorq
