#include "shell/overlay/WritingCard.h"

#include "shell/overlay/DifferenceMarkup.h"
#include "support/text/Text.h"
#include "writing/ReplacementFit.h"
#include "writing/WritingToolsModel.h"

#include <QClipboard>
#include <QGuiApplication>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::array actions{WritingToolAction::Rephrase, WritingToolAction::Improve,
                             WritingToolAction::Shorter};

// Not in the middle of a character.
QString shown(const QString& text) {
    qsizetype end = WritingCard::longestShown;
    if (text.size() <= end) return text;
    if (text.at(end).isLowSurrogate()) --end;
    return text.left(end) + u"…"_s;
}

} // namespace

WritingCard::WritingCard(AccountSession& account, AccountSignIn& signIn, LocalSignIn* local)
    : m_signIn(account, signIn, local) {
    connect(&m_signIn, &PanelSignIn::changed, this, &WritingCard::changed);
}

void WritingCard::setSession(WritingToolsModel* session) {
    if (m_session) m_session->disconnect(this);
    m_session = session;
    m_notice.clear();
    m_lastError.clear();
    if (session != nullptr) listen();
    compare();
    emit draftChanged();
    emit suggestionChanged();
    emit changed();
}

void WritingCard::setNotice(const QString& sentence) {
    setSession(nullptr);
    m_notice = sentence;
    emit changed();
    emit announced(sentence);
}

void WritingCard::setPlace(bool pointsUp, double tipX) {
    const bool isSame = pointsUp == m_pointsUp && tipX == m_tipX;
    if (isSame) return;
    m_pointsUp = pointsUp;
    m_tipX = tipX;
    emit placed();
}

void WritingCard::listen() {
    const WritingToolsModel* session = m_session;
    connect(session, &WritingToolsModel::suggestionChanged, this, [this] {
        compare();
        emit suggestionChanged();
        emit changed();
        if (!suggestion().isEmpty()) emit announced(m_spoken);
    });
    connect(session, &WritingToolsModel::draftPromptChanged, this, &WritingCard::draftChanged);
    connect(session, &WritingToolsModel::stateChanged, this, [this] {
        emit changed();
        tellOutcome();
    });
    connect(session, &WritingToolsModel::promptFocusTokenChanged, this,
            &WritingCard::focusPromptWanted);
    connect(session, &WritingToolsModel::replaced, this, [this] {
        emit changed();
        emit announced(tr("Replaced"));
    });
    connect(session, &WritingToolsModel::undone, this, [this] {
        emit changed();
        emit announced(m_session->standing().isEmpty() ? tr("Your original is back")
                                                       : tr("The version before is back"));
    });
}

void WritingCard::tellOutcome() {
    const QString now = error();
    if (std::exchange(m_lastError, now) != now && !now.isEmpty()) emit announced(now);
}

// Only what is shown is compared: the rest would take its time for nobody.
void WritingCard::compare() {
    m_difference.clear();
    m_spoken.clear();
    const QString text = suggestion();
    if (text.isEmpty()) return;
    const QString& original = m_session->selection().originalText;
    const QString written = replacementFor(original, text);
    m_difference =
        wordDifference(shown(trimmed(original).toString()), shown(trimmed(written).toString()));
    m_spoken = vorq::spokenDifference(m_difference);
}

QString WritingCard::suggestion() const {
    return m_session ? m_session->suggestion() : QString();
}

void WritingCard::setShowsDifference(bool shows) {
    if (std::exchange(m_showsDifference, shows) != shows) emit suggestionChanged();
}

QString WritingCard::markup(const QColor& removed, const QColor& added) const {
    if (!m_showsDifference || m_difference.empty()) return styledText(shown(suggestion()));
    return differenceMarkup(m_difference, {removed, added});
}

int WritingCard::takeNumber() const {
    return m_session ? static_cast<int>(m_session->takes().seen().indexOf(suggestion())) + 1 : 0;
}

int WritingCard::takeCount() const {
    return m_session ? static_cast<int>(m_session->takes().seen().size()) : 0;
}

QString WritingCard::draft() const {
    return m_session ? m_session->draftPrompt() : QString();
}

void WritingCard::setDraft(const QString& text) {
    if (m_session) m_session->setDraftPrompt(text);
}

bool WritingCard::isWorking() const {
    return m_session && m_session->isWorking();
}

bool WritingCard::isReplacing() const {
    return m_session && m_session->isReplacing();
}

bool WritingCard::isReplaced() const {
    return m_session && !suggestion().isEmpty() && m_session->standing() == suggestion();
}

bool WritingCard::hasReplaced() const {
    return m_session && m_session->hasReplaced();
}

bool WritingCard::canUndo() const {
    return m_session && m_session->canUndo();
}

bool WritingCard::canReplace() const {
    return m_session && !isWorking() && !isReplacing() && !isReplaced() &&
           !trimmed(suggestion()).isEmpty();
}

bool WritingCard::canSubmit() const {
    return m_session && isSignedIn() && m_session->canSubmit();
}

QString WritingCard::error() const {
    return m_session ? failureOf(*m_session) : QString();
}

QString WritingCard::failureOf(const WritingToolsModel& session) {
    if (const auto& message = session.errorMessage()) return *message;
    return session.replaceFailed() ? tr("Couldn’t replace — try again") : QString();
}

int WritingCard::activeAction() const {
    const auto action = m_session ? m_session->activeAction() : std::nullopt;
    return action ? static_cast<int>(*action) : -1;
}

void WritingCard::submit() {
    if (!m_session || !isSignedIn()) return;
    if (trimmed(m_session->draftPrompt()).isEmpty()) return replace();
    m_session->submitPrompt();
}

void WritingCard::run(int action) {
    const bool isKnown = action >= 0 && static_cast<std::size_t>(action) < actions.size();
    if (m_session && isSignedIn() && isKnown)
        m_session->runAction(actions.at(static_cast<std::size_t>(action)));
}

void WritingCard::stop() {
    if (m_session) m_session->cancelRewrite();
}

void WritingCard::replace() {
    if (canReplace()) m_session->replaceInApp();
}

void WritingCard::undo() {
    if (m_session) m_session->undoReplace();
}

void WritingCard::copy() {
    if (suggestion().isEmpty()) return;
    QGuiApplication::clipboard()->setText(suggestion());
    emit announced(tr("Copied"));
}

bool WritingCard::showOtherTake(int steps) {
    const int least = suggestion().isEmpty() ? 1 : 2;
    if (takeCount() < least || isWorking() || isReplacing()) return false;
    m_session->showOtherTake(steps);
    return true;
}

} // namespace vorq
