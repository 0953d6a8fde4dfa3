#include "doubles/panel/ConversationFixture.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace vorq {

ConversationFixture::ConversationFixture() {
    m_defaults.apply({{"vorq.session.token", "token"}, {"vorq.session.email", "a@b.c"}});
    m_capture.names[7] = u"Editor"_s;
    restart();
}

ConversationFixture::~ConversationFixture() {
    m_tester.reset();
    m_state.reset();
    m_clock.settle();
}

void ConversationFixture::restart() {
    m_tester.reset();
    m_state.reset();
    m_clock.settle();
    m_state = std::make_unique<VorqAppState>(VorqAppState::Platform{
        m_clock, m_defaults, m_paths, m_transport, m_capture, m_notesApplication});
    m_tester = std::make_unique<QAbstractItemModelTester>(
        &panel().messages(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    m_clock.settle();
}

QStringList ConversationFixture::texts() {
    QStringList list;
    for (const VorqMessage& message : messages())
        list += message.text;
    return list;
}

void ConversationFixture::submit(const QString& prompt) {
    panel().submit(prompt);
    m_clock.settle();
}

void ConversationFixture::sendText(const ScriptedExchange& exchange, const QString& text) {
    exchange.send("data: " + json({{"text", text}}) + "\n\n");
    m_clock.settle();
}

void ConversationFixture::sendDone(const ScriptedExchange& exchange, const QString& summary) {
    const QVariantMap followUp{{"question", "More?"}, {"labels", QStringList{"Yes", "No"}}};
    exchange.send("data: " + json({{"done", true}, {"summary", summary}, {"followUp", followUp}}) +
                  "\n\n");
    m_clock.settle();
}

void ConversationFixture::reply(const ScriptedExchange& exchange, const QString& text) {
    exchange.begin();
    sendDone(exchange, text);
}

void ConversationFixture::refuse(const ScriptedExchange& exchange, int status,
                                 const QByteArray& body) {
    exchange.respond(status, body);
    m_clock.settle();
}

QByteArray ConversationFixture::json(const QVariantMap& object) {
    return QJsonDocument(QJsonObject::fromVariantMap(object)).toJson(QJsonDocument::Compact);
}

} // namespace vorq
