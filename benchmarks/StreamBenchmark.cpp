// A streamed reply from the bytes of its events to the message model, beside a bare parse of the
// same texts.

#include "RatioReporter.h"
#include "ReplyCorpus.h"
#include "backend/AnalysisStream.h"
#include "core/MessageList.h"
#include "core/ReplyTypewriter.h"
#include "core/WorkStatus.h"
#include "platform/testing/ManualClock.h"
#include "rendering/AssistantReplyDocument.h"
#include "support/JsonWriter.h"

#include <QCoreApplication>

#include <md4c.h>

namespace {

using namespace vorq;
using namespace vorq::bench;

constexpr std::size_t replySize = 40'000;
constexpr std::size_t streamStep = 200;

void md4cParse(std::string_view text) {
    MD_PARSER parser{};
    parser.flags = MD_FLAG_TABLES;
    parser.enter_block = [](MD_BLOCKTYPE, void*, void*) { return 0; };
    parser.leave_block = [](MD_BLOCKTYPE, void*, void*) { return 0; };
    parser.enter_span = [](MD_SPANTYPE, void*, void*) { return 0; };
    parser.leave_span = [](MD_SPANTYPE, void*, void*) { return 0; };
    parser.text = [](MD_TEXTTYPE, const MD_CHAR*, MD_SIZE, void*) { return 0; };
    md_parse(text.data(), static_cast<MD_SIZE>(text.size()), &parser, nullptr);
}

struct Stream {
    std::vector<std::string> texts;
    std::vector<QByteArray> events;
    std::size_t bytes = 0;
};

// A reply in growing steps, each the whole of it so far.
Stream streamOf(Script script) {
    const std::string reply = replyText(script, replySize);
    Stream stream;
    for (std::size_t size = streamStep; size < reply.size(); size += streamStep) {
        std::size_t end = size;
        while ((static_cast<unsigned char>(reply[end]) & 0xC0U) == 0x80U)
            ++end;
        stream.texts.push_back(reply.substr(0, end));
        JsonWriter writer;
        writer.beginObject();
        writer.member(u"text", QStringView(QString::fromStdString(stream.texts.back())));
        writer.endObject();
        stream.events.push_back("data: " + writer.take() + "\n\n");
        stream.bytes += end;
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

template<typename Work>
void add(const std::string& name, std::size_t bytes, Work work) {
    benchmark::RegisterBenchmark(name.c_str(), [bytes, work](benchmark::State& state) {
        for (auto _ : state)
            work();
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    });
}

void addAll() {
    for (const Script script : {Script::Ascii, Script::Typographic, Script::Mixed}) {
        const Stream stream = streamOf(script);
        const std::string name = std::string(scriptName(script)) + "/stream";
        add("stream/" + name, stream.bytes, [stream] { runStream(stream); });
        add("decode/" + name, stream.bytes, [stream] {
            AnalysisStream reader(
                [](const QString& text) { benchmark::DoNotOptimize(text.size()); });
            for (const QByteArray& event : stream.events)
                reader.feed(event);
        });
        add("md4c/" + name, stream.bytes, [stream] {
            for (const std::string& text : stream.texts)
                md4cParse(text);
        });
    }
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    addAll();
    RatioReporter reporter("md4c");
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
