#include "writing/WritingToolsModel.h"

#include "backend/account/AccountSession.h"
#include "backend/http/Errors.h"
#include "support/text/Text.h"
#include "writing/ReplacementFit.h"
#include "writing/RewriteExtraction.h"
#include "writing/WritingAsk.h"
#include "writing/WritingLogging.h"
#include "writing/WritingPrompts.h"
#include "writing/asking/SelectionPrompt.h"

#include <utility>

namespace vorq {
namespace {

using Kind = WritingToolsInteraction::Kind;

// The card has settled by then, and the keys of the prompt field are up.
constexpr std::chrono::milliseconds pauseBeforeReplacing{50};

bool isBlankText(QStringView text) {
    return trimmed(text).isEmpty();
}

// As a writer would say it.
QString instructionOf(WritingToolAction action) {
    switch (action) {
    case WritingToolAction::Rephrase:
        return QStringLiteral("Rephrase it");
    case WritingToolAction::Improve:
        return QStringLiteral("Improve it");
    case WritingToolAction::Shorter:
        return QStringLiteral("Make it shorter");
    }
    return {};
}

SelectionReplacer::Target targetOf(const WritingSelection& selection) {
    return {.source = selection.sourcePID,
            .window = selection.window,
            .original = selection.originalText,
            .range = selection.selectedRange};
}

// Nothing where the card has a sentence of its own.
std::optional<QString> replaceFailure(SelectionReplacer::Outcome outcome) {
    using Outcome = SelectionReplacer::Outcome;
    switch (outcome) {
    case Outcome::OnClipboard:
        return WritingToolsModel::tr("The selection has changed, so nothing was replaced. The "
                                     "suggestion is on the clipboard.");
    case Outcome::Unanswered:
        return WritingToolsModel::tr("The application does not answer, so nothing was replaced. "
                                     "The suggestion is on the clipboard.");
    case Outcome::Pending:
        return WritingToolsModel::tr("The application has not taken the suggestion yet, and may "
                                     "still do so. It is on the clipboard, too.");
    case Outcome::Replaced:
    case Outcome::NotReplaced:
        break;
    }
    return std::nullopt;
}

QString wordFailure(SelectionReplacer::Outcome outcome, const QString& word) {
    using Outcome = SelectionReplacer::Outcome;
    if (outcome == Outcome::Unanswered)
        return WritingToolsModel::tr("The application does not answer, so nothing was replaced.");
    if (outcome == Outcome::Pending)
        return WritingToolsModel::tr("The application has not taken the word yet, and may still do "
                                     "so.");
    return WritingToolsModel::tr("Couldn’t replace “%1” — try again").arg(word);
}

QString undoFailure(SelectionReplacer::Outcome outcome) {
    using Outcome = SelectionReplacer::Outcome;
    switch (outcome) {
    case Outcome::OnClipboard:
        return WritingToolsModel::tr("The text has changed since, so it was left as it is. Your "
                                     "original is on the clipboard.");
    case Outcome::Unanswered:
        return WritingToolsModel::tr("The application does not answer, so the text was left as it "
                                     "is. Your original is on the clipboard.");
    case Outcome::Pending:
        return WritingToolsModel::tr("The application has not taken your original back yet, and "
                                     "may still do so. It is on the clipboard, too.");
    case Outcome::Replaced:
    case Outcome::NotReplaced:
        break;
    }
    return WritingToolsModel::tr("Couldn’t put the original back — your application may be able to "
                                 "undo it.");
}

} // namespace

QString rawString(WritingToolAction action) {
    switch (action) {
    case WritingToolAction::Rephrase:
        return QStringLiteral("rephrase");
    case WritingToolAction::Improve:
        return QStringLiteral("improve");
    case WritingToolAction::Shorter:
        return QStringLiteral("shorter");
    }
    return {};
}

WritingToolsModel::WritingToolsModel(const Services& services, const WritingSelection& selection,
                                     QObject* parent)
    : QObject(parent),
      m_services(services),
      m_selection(selection),
      m_standing{.target = targetOf(selection), .suggestion = {}},
      m_wordAltsLoader({services.clock, services.api, services.account}, m_words) {}

void WritingToolsModel::setDraftPrompt(const QString& text) {
    if (m_draftPrompt == text) return;
    m_draftPrompt = text;
    const QPointer<WritingToolsModel> self(this);
    emit draftPromptChanged();
    if (self) emit stateChanged();
}

void WritingToolsModel::setArrowPointsUp(bool pointsUp) {
    if (std::exchange(m_arrowPointsUp, pointsUp) != pointsUp) emit stateChanged();
}

bool WritingToolsModel::canSubmit() const {
    return !m_isReplacing && !isBlankText(m_draftPrompt);
}

void WritingToolsModel::record(const Kind& kind) {
    m_log.record(m_services.clock.wallTime(), kind);
}

void WritingToolsModel::setSuggestion(const QString& text) {
    if (m_suggestion == text) return;
    m_suggestion = text;
    emit suggestionChanged();
}

void WritingToolsModel::announceContent() {
    const QPointer<WritingToolsModel> self(this);
    emit stateChanged();
    if (self) emit contentChange();
}

void WritingToolsModel::announce() {
    const QPointer<WritingToolsModel> self(this);
    announceContent();
    if (!self) return;
    ++m_promptFocusToken;
    emit promptFocusTokenChanged();
}

void WritingToolsModel::submitPrompt() {
    const QString text = trimmed(m_draftPrompt).toString();
    if (text.isEmpty() || m_isReplacing) return;
    m_activeAction.reset();
    const QPointer<WritingToolsModel> self(this);
    setDraftPrompt({});
    if (!self) return;
    if (isSendToVorqPrompt(text)) {
        emit sendToVorq(m_selection.originalText);
        return;
    }
    if (isApplyOnlyPrompt(text)) return applySuggestion();
    if (isAnotherTakePrompt(text)) {
        record(Kind::rejectedTake());
        return requestRewrite(
            promptForAnotherTake(m_lastInstruction, m_takes.rejected(), sessionContextBlock()),
            false);
    }
    m_lastInstruction = text;
    record(Kind::asked(text));
    requestRewrite(promptForUserInstruction(text, m_suggestion, sessionContextBlock()), false);
}

void WritingToolsModel::runAction(WritingToolAction action) {
    if (m_isReplacing) return;
    const QString words = instructionOf(action);
    m_activeAction = action;
    m_lastInstruction = words;
    record(Kind::asked(words));
    requestRewrite(promptForUserInstruction(words, m_suggestion, sessionContextBlock()), false);
}

void WritingToolsModel::applySuggestion() {
    if (!isBlankText(m_suggestion)) return replaceInApp();
    m_errorMessage = tr("Nothing to replace yet.");
    announce();
}

void WritingToolsModel::requestRewrite(const QString& prompt, bool applyAfter) {
    if (!m_isWorking) m_suggestionBefore = m_suggestion;
    m_takes.reject(m_suggestion);
    m_isWorking = true;
    m_wordAltsLoader.giveWay();
    m_errorMessage.reset();
    m_replaceFailed = false;
    const Ask ask{.prompt = prompt,
                  .instruction = m_lastInstruction.value_or(QString()),
                  .applyAfter = applyAfter};
    m_rewriteTask.restart([self = QPointer(this), ask](std::stop_token stop) {
        return rewrite(self, ask, std::move(stop));
    });
    const QPointer<WritingToolsModel> self(this);
    setSuggestion({});
    if (self) announceContent();
}

QCoro::Task<> WritingToolsModel::rewrite(QPointer<WritingToolsModel> self, Ask ask,
                                         std::stop_token stop) {
    if (!self || stop.stop_requested()) co_return;
    const std::optional<Rewrite> answer = co_await askBackend(self, ask, stop);
    // What was asked since has taken the place of this.
    if (!self || stop.stop_requested()) co_return;
    self->finishRewrite(answer, ask.applyAfter);
}

// Nothing if the call was dropped, as when the session of the account ends.
QCoro::Task<std::optional<WritingToolsModel::Rewrite>>
WritingToolsModel::askBackend(QPointer<WritingToolsModel> self, Ask ask, std::stop_token stop) {
    std::optional<Rewrite> result;
    const QString original = self->m_selection.originalText;
    try {
        const AIAnalysis analysis = co_await askAboutSelection(
            self->m_services.account, self->m_services.api, ask.prompt, original, stop);
        result = rewriteOf(analysis, original, ask.instruction);
    } catch (const OperationCancelled&) {
        result.reset();
    } catch (const BackendError& error) {
        result = std::unexpected(error.message());
    } catch (const std::exception& error) {
        result = std::unexpected(QString::fromUtf8(error.what()));
    }
    co_return result;
}

void WritingToolsModel::finishRewrite(const std::optional<Rewrite>& answer, bool applyAfter) {
    m_isWorking = false;
    m_wordAltsLoader.goOn();
    const QPointer<WritingToolsModel> self(this);
    if (answer && answer->has_value() && !answer->value().isEmpty()) {
        m_takes.show(answer->value());
        setSuggestion(answer->value());
        if (!self) return;
        if (!applyAfter) return announce();
        announceContent();
        if (self) replaceInApp();
        return;
    }
    if (answer && answer->has_value())
        m_errorMessage = tr("Nothing to suggest — try a clearer rewrite ask.");
    else if (answer)
        m_errorMessage = answer->error();
    announce();
}

void WritingToolsModel::cancelRewrite() {
    if (!m_isWorking) return;
    m_rewriteTask.cancel();
    m_isWorking = false;
    m_wordAltsLoader.goOn();
    const QPointer<WritingToolsModel> self(this);
    setSuggestion(m_suggestionBefore);
    if (self) announce();
}

void WritingToolsModel::showOtherTake(int steps) {
    if (m_isWorking || m_isReplacing) return;
    const QString take = m_takes.neighbourOf(m_suggestion, steps);
    if (take.isEmpty() || take == m_suggestion) return;
    m_errorMessage.reset();
    m_replaceFailed = false;
    const QPointer<WritingToolsModel> self(this);
    setSuggestion(take);
    if (self) announceContent();
}

void WritingToolsModel::beginReplacing() {
    m_isReplacing = true;
    m_replaceFailed = false;
    m_errorMessage.reset();
    const QPointer<WritingToolsModel> self(this);
    emit stateChanged();
    if (self) emit replaceStarted();
}

void WritingToolsModel::replaceInApp() {
    const QString text = trimmed(m_suggestion).toString();
    if (text.isEmpty() || m_isReplacing) return;
    Version next{.target = m_standing.target, .suggestion = m_suggestion};
    next.target.original = replacementFor(m_selection.originalText, text);
    if (next.target.range) next.target.range->length = next.target.original.size();
    m_replaceTask.restart(
        [self = QPointer(this), next](const std::stop_token&) { return replace(self, next); });
    beginReplacing();
}

QCoro::Task<SelectionReplacer::Outcome> WritingToolsModel::write(QPointer<WritingToolsModel> self,
                                                                 QString text,
                                                                 SelectionReplacer::Target over) {
    Outcome outcome = Outcome::NotReplaced;
    co_await sleepFor(self->m_services.clock, pauseBeforeReplacing, {});
    if (!self) co_return outcome;
    outcome = co_await self->m_services.replacer.replaceSelectedText(std::move(text),
                                                                     std::move(over), {});
    co_return outcome;
}

QCoro::Task<> WritingToolsModel::replace(QPointer<WritingToolsModel> self, Version next) {
    if (!self) co_return;
    const Outcome outcome = co_await write(self, next.target.original, self->m_standing.target);
    if (self) self->finishReplace(outcome, next);
}

void WritingToolsModel::finishReplace(Outcome outcome, const Version& next) {
    m_isReplacing = false;
    const QPointer<WritingToolsModel> self(this);
    if (outcome == Outcome::Replaced) {
        m_former.push_back(takeStanding());
        m_standing = next;
        record(Kind::acceptedReplace());
        forgetWordAlts();
        if (!self) return;
        emit stateChanged();
        if (self) emit replaceFinished();
        if (self) emit replaced();
        return;
    }
    m_replaceFailed = true;
    m_errorMessage = replaceFailure(outcome);
    qCInfo(writingLog).nospace() << "Vorq writing tools: Replace failed for pid="
                                 << m_standing.target.source.value_or(-1);
    emit replaceFinished();
    if (self) announce();
}

WritingToolsModel::Version WritingToolsModel::takeStanding() {
    Version standing = std::move(m_standing);
    standing.selection = m_selection;
    standing.wordAlts = m_words.wordAlts();
    return standing;
}

// A place in the text that is only known by what stands there would be any place of that word.
bool WritingToolsModel::canReplaceWords() const {
    return m_selection.sourcePID && m_selection.selectedRange &&
           m_selection.selectedRange->location >= 0 &&
           m_selection.selectedRange->length == m_selection.originalText.size() &&
           m_standing.target.original == m_selection.originalText;
}

WordsSought WritingToolsModel::wordsSought() const {
    WordsSought sought{.source = m_selection.sourcePID,
                       .selection = m_selection.originalText,
                       .selected = m_selection.selectedRange.value_or(TextRange()),
                       .words = {}};
    for (const WritingWordAlt& alt : m_words.wordAlts())
        sought.words.push_back(alt.utf16Range.value_or(TextRange()));
    return sought;
}

void WritingToolsModel::loadWordAlts() {
    if (canReplaceWords()) m_wordAltsLoader.load(m_selection.originalText);
}

void WritingToolsModel::noteReliablePlacement() {
    if (std::exchange(m_selection.selectionReliable, true) || !canReplaceWords()) return;
    m_wordAltsLoader.reloadForReliableFrame(m_selection.originalText);
}

void WritingToolsModel::forgetWordAlts() {
    m_wordAltsLoader.stop();
    if (!m_words.wordAlts().isEmpty()) m_words.clear();
}

// Where the word's own text or the one that took its place stands.
SelectionReplacer::Target WritingToolsModel::targetOfWord(const WritingWordAlt& alt,
                                                          const QString& standing) const {
    const TextRange all = m_selection.selectedRange.value_or(TextRange());
    SelectionReplacer::Target target = m_standing.target;
    target.within =
        SelectionReplacer::Target::Whole{.text = m_selection.originalText, .range = all};
    target.original = standing;
    target.range =
        TextRange{.location = all.location + alt.utf16Range.value_or(TextRange()).location,
                  .length = standing.size()};
    return target;
}

bool WritingToolsModel::applyWordAlt(const QUuid& id) {
    const std::optional<WritingWordAlt> alt = m_words.find(id);
    if (!alt || m_isReplacing || !canReplaceWords() || !alt->utf16Range) return false;
    m_replaceTask.restart([self = QPointer(this), alt = *alt](const std::stop_token&) {
        return replaceWord(self, alt);
    });
    m_isReplacing = true;
    const QPointer<WritingToolsModel> self(this);
    m_words.beginApplying(id);
    if (self) beginReplacing();
    return true;
}

QCoro::Task<> WritingToolsModel::replaceWord(QPointer<WritingToolsModel> self, WritingWordAlt alt) {
    if (!self) co_return;
    const Outcome outcome =
        co_await write(self, alt.alternative, self->targetOfWord(alt, alt.original));
    if (self) self->finishWord(outcome, alt);
}

void WritingToolsModel::finishWord(Outcome outcome, const WritingWordAlt& alt) {
    m_isReplacing = false;
    const QPointer<WritingToolsModel> self(this);
    if (outcome != Outcome::Replaced) {
        m_errorMessage = wordFailure(outcome, alt.original);
        m_words.endApplying();
        if (self) emit replaceFinished();
        if (self) announceContent();
        return;
    }
    m_former.push_back(takeStanding());
    m_former.back().word = alt;
    m_selection.originalText = withWordReplaced(m_selection.originalText, alt);
    m_selection.selectedRange =
        TextRange{.location = m_selection.selectedRange.value_or(TextRange()).location,
                  .length = m_selection.originalText.size()};
    m_standing = {.target = targetOf(m_selection), .suggestion = {}};
    record(Kind::selectionTextChanged(m_selection.originalText));
    m_words.show(afterReplacing(m_words.wordAlts(), alt));
    if (self) emit stateChanged();
    if (self) emit replaceFinished();
    if (self) emit wordReplaced(alt);
}

void WritingToolsModel::undoReplace() {
    if (!canUndo()) return;
    m_replaceTask.restart([self = QPointer(this)](const std::stop_token&) { return undo(self); });
    beginReplacing();
}

QCoro::Task<> WritingToolsModel::undo(QPointer<WritingToolsModel> self) {
    if (!self) co_return;
    const Version& former = self->m_former.back();
    QString text = former.word ? former.word->original : former.target.original;
    SelectionReplacer::Target over = self->m_standing.target;
    if (former.word) over = self->targetOfWord(*former.word, former.word->alternative);
    // The writer may have gone on to select something else, and means this one all the same.
    over.reselects = true;
    const Outcome outcome = co_await write(self, std::move(text), std::move(over));
    if (self) self->finishUndo(outcome);
}

// What was not put back can be tried again.
void WritingToolsModel::finishUndo(Outcome outcome) {
    m_isReplacing = false;
    const QPointer<WritingToolsModel> self(this);
    if (outcome == Outcome::Replaced) {
        m_standing = std::move(m_former.back());
        m_former.pop_back();
        m_standing.word.reset();
        m_selection = m_standing.selection;
        m_words.show(m_standing.wordAlts);
        if (!self) return;
        emit stateChanged();
        if (self) emit replaceFinished();
        if (self) emit undone();
        return;
    }
    m_errorMessage = undoFailure(outcome);
    emit replaceFinished();
    if (self) announce();
}

} // namespace vorq
