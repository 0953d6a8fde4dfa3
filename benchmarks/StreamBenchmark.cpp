// A streamed reply from the bytes of its events to the message model, beside a bare parse of the
// same texts.

#include "Contest.h"
#include "ReplyCorpus.h"
#include "backend/api/AnalysisStream.h"
#include "panel/MessageList.h"
#include "panel/ReplyTypewriter.h"
#include "panel/WorkStatus.h"
#include "platform/testing/ManualClock.h"
#include "rendering/AssistantReplyDocument.h"
#include "support/json/JsonWriter.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

namespace {

using namespace vorq;
using namespace vorq::bench;

constexpr std::size_t replySize = 40'000;
struct Stream {
    std::vector<std::string> texts;
    std::vector<QByteArray> events;
    std::size_t bytes = 0;
};

// A reply in growing steps, each the whole of it so far.
Stream streamOf(Script script) {
    Stream stream;
    stream.texts = growingTexts(replyText(script, replySize));
    for (const std::string& text : stream.texts) {
        JsonWriter writer;
        writer.beginObject();
        writer.member(u"text", QStringView(QString::fromStdString(text)));
        writer.endObject();
        stream.events.push_back("data: " + writer.take() + "\n\n");
        stream.bytes += text.size();
    }
    return stream;
}

// What the conversation does with each text.
class Conversation {
  public:
    Conversation() {
        VorqMessage placeholder = VorqMessage::placeholder();
        m_id = placeholder.id;
        m_messages.append(std::move(placeholder));
    }

    void show(const QString& text) {
        const QString committed = AssistantReplyDocument::committedSource(text, false);
        if (!committed.isEmpty()) m_typewriter.applyTypingText(committed, m_id, true);
    }

    [[nodiscard]] const QString& shown() const { return m_messages.find(m_id)->text; }

  private:
    ManualClock m_clock;
    MessageList m_messages;
    WorkStatus m_status{m_clock, m_messages};
    ReplyTypewriter m_typewriter{m_clock, m_messages, m_status};
    QUuid m_id;
};

void runStream(const Stream& stream) {
    Conversation conversation;
    AnalysisStream reader([&conversation](const QString& text) { conversation.show(text); });
    for (const QByteArray& event : stream.events)
        reader.feed(event);
    benchmark::DoNotOptimize(conversation.shown().size());
}

void addAll() {
    for (const Script script : {Script::Ascii, Script::Typographic, Script::Mixed}) {
        const Stream stream = streamOf(script);
        const std::string name = std::string(scriptName(script)) + "/stream";
        addContender("stream", name, stream.bytes, [stream] { runStream(stream); });
        addContender("decode", name, stream.bytes, [stream] {
            AnalysisStream reader(
                [](const QString& text) { benchmark::DoNotOptimize(text.size()); });
            for (const QByteArray& event : stream.events)
                reader.feed(event);
        });
        addContender("md4c", name, stream.bytes, [stream] {
            for (const std::string& text : stream.texts)
                md4cParse(text);
        });
    }
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    addAll();
    return runContest(argc, argv);
}
