#pragma once

#include "platform/Clock.h"
#include "support/async/TaskSlot.h"
#include "writing/words/WritingWordAlts.h"

#include <QObject>
#include <QPointer>

#include <optional>

namespace vorq {

class AccountSession;
class VorqAPIService;

/// Asks a model for other words of a selection: once in a session, and once more when the place of
/// the selection becomes known and there are none. It gives way to what the writer asks for. What
/// goes wrong is nothing to tell the writer about. Main thread only.
class WordAltsLoader final : public QObject {
    Q_OBJECT

  public:
    /// After a session opens, for who closes it at once.
    static constexpr Clock::Duration delay = std::chrono::milliseconds(300);
    /// How often a request that gave way is made anew.
    static constexpr int mostRetries = 1;

    struct Services {
        Clock& clock;
        VorqAPIService& api;
        AccountSession& account;
    };

    /// All must outlive the loader and what it has under way.
    WordAltsLoader(const Services& services, WritingWordAlts& words, QObject* parent = nullptr);

    /// Does nothing once it was called, for a text of few words, and while nobody is signed in.
    void load(const QString& selection);
    /// The place of the selection has become known.
    void reloadForReliableFrame(const QString& selection);
    [[nodiscard]] bool didReloadWordAltsForReliableFrame() const { return m_didReload; }

    /// Ends a request, for as long as the writer waits for something else.
    void giveWay();
    void goOn();
    /// Ends it for good: the selection is no longer what it was.
    void stop();

  private:
    using Offered = std::optional<QList<WritingWordAlt>>; // nothing if the call failed

    static QCoro::Task<> fill(QPointer<WordAltsLoader> self, std::stop_token stop);
    static QCoro::Task<Offered> ask(QPointer<WordAltsLoader> self, QString selection,
                                    std::stop_token stop);
    void start();

    Services m_services;
    WritingWordAlts& m_words;
    QString m_selection; // what is asked about; "" for nothing
    bool m_didBegin = false;
    bool m_didReload = false;
    bool m_isGivingWay = false;
    bool m_isToBeDone = false; // once it no longer gives way
    int m_retries = 0;
    TaskSlot m_wordAltsTask;
};

} // namespace vorq
