#include "writing/words/WordAltsLoader.h"

#include "backend/account/AccountSession.h"
#include "backend/http/Errors.h"
#include "support/text/Text.h"
#include "writing/asking/SelectionPrompt.h"
#include "writing/words/WordAltsAnswer.h"
#include "writing/words/WordAltsChoice.h"
#include "writing/words/WordAltsPrompt.h"

#include <utility>

namespace vorq {

WordAltsLoader::WordAltsLoader(const Services& services, WritingWordAlts& words, QObject* parent)
    : QObject(parent), m_services(services), m_words(words) {}

void WordAltsLoader::load(const QString& selection) {
    if (m_didBegin || wordAltsFor(selection) < 1) return;
    if (trimmed(m_services.account.sessionToken()).isEmpty()) return;
    m_didBegin = true;
    m_selection = selection;
    start();
}

void WordAltsLoader::reloadForReliableFrame(const QString& selection) {
    if (!m_didBegin || std::exchange(m_didReload, true)) return;
    if (m_wordAltsTask.isRunning() || !m_words.wordAlts().isEmpty()) return;
    m_selection = selection;
    start();
}

void WordAltsLoader::start() {
    m_isToBeDone = m_isGivingWay;
    if (m_isGivingWay) return;
    m_words.beginLoading();
    m_wordAltsTask.restart(
        [self = QPointer(this)](std::stop_token stop) { return fill(self, std::move(stop)); });
}

void WordAltsLoader::giveWay() {
    m_isGivingWay = true;
    if (!m_wordAltsTask.isRunning()) return;
    m_wordAltsTask.cancel();
    m_isToBeDone = m_retries++ < mostRetries;
    m_words.endLoading();
}

void WordAltsLoader::goOn() {
    if (std::exchange(m_isGivingWay, false) && m_isToBeDone) start();
}

void WordAltsLoader::stop() {
    m_isToBeDone = false;
    m_wordAltsTask.cancel();
    m_words.endLoading();
}

QCoro::Task<> WordAltsLoader::fill(QPointer<WordAltsLoader> self, std::stop_token stop) {
    if (!self || stop.stop_requested()) co_return;
    co_await sleepFor(self->m_services.clock, delay, stop);
    if (!self || stop.stop_requested()) co_return;
    const Offered offered = co_await ask(self, self->m_selection, stop);
    if (!self || stop.stop_requested()) co_return;
    self->m_words.show(offered.value_or(QList<WritingWordAlt>()));
}

QCoro::Task<WordAltsLoader::Offered> WordAltsLoader::ask(QPointer<WordAltsLoader> self,
                                                         QString selection, std::stop_token stop) {
    Offered result;
    try {
        const AIAnalysis analysis = co_await askAboutSelection(
            self->m_services.account, self->m_services.api,
            promptForWordAlternatives(wordAltsFor(selection)), selection, stop);
        result = chosenWordAlts(readWordAlts(analysis.summary), selection);
    } catch (const std::exception&) {
        // The writer has not asked for it, and is not to hear of it.
        result.reset();
    }
    co_return result;
}

} // namespace vorq
