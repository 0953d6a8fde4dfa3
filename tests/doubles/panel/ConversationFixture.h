#pragma once

#include "capture/selection/SelectionCapture.h"
#include "core/VorqAppState.h"
#include "doubles/backend/ScriptedTransport.h"
#include "platform/testing/ManualClock.h"
#include "platform/testing/MemoryDefaults.h"
#include "platform/testing/ScriptedNotesBridge.h"
#include "platform/testing/TemporaryPaths.h"
#include "support/async/Wakeup.h"

#include <QAbstractItemModelTester>

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>

namespace vorq {

/// The source applications of a test and what each has highlighted.
class ScriptedCapture final : public SelectionCapture {
  public:
    bool trusted = true;
    std::optional<ProcessId> frontmost;
    std::map<ProcessId, QString> selections; // 0 for no process
    bool readsLikeSecret = false;            // whatever is selected
    std::set<ProcessId> secrets;             // what is selected in these does
    Clock* clock = nullptr;                  // captures take their time by it
    std::chrono::milliseconds takes{0};
    int underWay = 0; // captures
    int most = 0;     // of them at once
    std::vector<std::optional<ProcessId>> asked;
    QStringList lines;

    [[nodiscard]] bool isTrusted() const override { return trusted; }
    [[nodiscard]] std::optional<ProcessId> frontmostForeignProcess() const override {
        return frontmost;
    }
    [[nodiscard]] QString applicationName(ProcessId process) const override {
        return process == 7 ? QStringLiteral("Editor") : QString();
    }
    QCoro::Task<CapturedText> captureSelectedTextForHotKey(std::optional<ProcessId> source,
                                                           std::stop_token stop) override {
        asked.push_back(source);
        most = std::max(most, ++underWay);
        const Wakeup answered;
        answered.fire();
        co_await answered;
        if (clock) co_await sleepFor(*clock, takes, std::move(stop));
        --underWay;
        const auto found = selections.find(source.value_or(0));
        CapturedText captured;
        if (found != selections.end()) captured.text = found->second;
        captured.isHeldBack =
            (readsLikeSecret || secrets.contains(source.value_or(0))) && !captured.isEmpty();
        const CapturedText given = captured;
        co_return given;
    }
    void log(const QString& line) override { lines += line; }
};

/// A whole application state over a scripted backend, in virtual time, signed in.
class ConversationFixture : public testing::Test {
  protected:
    ConversationFixture();
    ~ConversationFixture() override;

    /// A new launch over the same settings.
    void restart();

    [[nodiscard]] VorqAppState& state() { return *m_state; }
    [[nodiscard]] PanelConversation& panel() { return m_state->panel(); }
    [[nodiscard]] const std::vector<VorqMessage>& messages() {
        return panel().messages().messages();
    }
    [[nodiscard]] const VorqMessage& last() { return messages().back(); }
    [[nodiscard]] QStringList texts();
    [[nodiscard]] VorqWorkStatus status() { return panel().workStatus().status(); }

    void submit(const QString& prompt);
    void advance(std::chrono::milliseconds time) { m_clock.advance(time); }

    /// The request that was sent last.
    [[nodiscard]] const ScriptedExchange& exchange() { return m_transport.last(); }

    void sendText(const ScriptedExchange& exchange, const QString& text);
    void sendDone(const ScriptedExchange& exchange, const QString& summary);
    /// A whole reply without anything streamed before.
    void reply(const ScriptedExchange& exchange, const QString& text);
    void refuse(const ScriptedExchange& exchange, int status, const QByteArray& body = "{}");

    [[nodiscard]] static QByteArray json(const QVariantMap& object);

    ManualClock m_clock;
    MemoryDefaults m_defaults;
    TemporaryPaths m_paths;
    ScriptedTransport m_transport{m_clock};
    ScriptedCapture m_capture;
    ScriptedNotesBridge m_notesApplication;
    std::unique_ptr<VorqAppState> m_state;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

/// A reply of three paragraphs, too long to appear at once.
inline const QString threeParagraphs =
    QString(60, u'a') + "\n\n" + QString(60, u'b') + "\n\n" + QString(60, u'c');

} // namespace vorq
