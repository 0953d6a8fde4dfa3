#pragma once

#include "core/VorqAppState.h"
#include "doubles/backend/ScriptedTransport.h"
#include "doubles/capture/ScriptedCapture.h"
#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedAppPaths.h"
#include "platform/testing/ScriptedDefaults.h"
#include "platform/testing/ScriptedNotesBridge.h"

#include <QAbstractItemModelTester>

#include <gmock/gmock.h>

#include <memory>

namespace vorq {

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
    ScriptedDefaults m_defaults;
    ScriptedAppPaths m_paths;
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
