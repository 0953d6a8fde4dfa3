// AssistantReplyDocument beside other Markdown parsers, on the same texts.

#include "RatioReporter.h"
#include "ReplyCorpus.h"
#include "rendering/AssistantReplyDocument.h"

#include <QGuiApplication>
#include <QTextDocument>

#include <cmark.h>
#include <md4c.h>

namespace {

using namespace vorq;
using namespace vorq::bench;

constexpr std::size_t streamStep = 200;

void md4cParse(std::string_view text) {
    MD_PARSER parser{};
    // Plain CommonMark, which is md4c at its fastest.
    parser.flags = 0;
    parser.enter_block = [](MD_BLOCKTYPE, void*, void*) { return 0; };
    parser.leave_block = [](MD_BLOCKTYPE, void*, void*) { return 0; };
    parser.enter_span = [](MD_SPANTYPE, void*, void*) { return 0; };
    parser.leave_span = [](MD_SPANTYPE, void*, void*) { return 0; };
    parser.text = [](MD_TEXTTYPE, const MD_CHAR*, MD_SIZE, void*) { return 0; };
    md_parse(text.data(), static_cast<MD_SIZE>(text.size()), &parser, nullptr);
}

// Runs `work` over the text, and reports the bytes of its UTF-8 form, whatever form it reads.
template<typename Work>
void add(const std::string& name, std::size_t bytes, Work work) {
    benchmark::RegisterBenchmark(name.c_str(), [bytes, work](benchmark::State& state) {
        for (auto _ : state)
            work();
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    });
}

void addWholeText(const std::string& caseName, const std::string& utf8, bool withSlowPeers) {
    const QString text = QString::fromStdString(utf8);
    add("blocks/" + caseName, utf8.size(),
        [text] { benchmark::DoNotOptimize(AssistantReplyDocument::blocks(text)); });
    add("committedSource/" + caseName, utf8.size(),
        [text] { benchmark::DoNotOptimize(AssistantReplyDocument::committedSource(text, false)); });
    add("md4c/" + caseName, utf8.size(), [utf8] { md4cParse(utf8); });
    if (!withSlowPeers) return;
    add("cmark/" + caseName, utf8.size(), [utf8] {
        cmark_node_free(cmark_parse_document(utf8.data(), utf8.size(), CMARK_OPT_DEFAULT));
    });
    add("QTextDocument/" + caseName, utf8.size(), [text] {
        QTextDocument document;
        document.setMarkdown(text);
    });
}

// A reply that arrives in steps, where each event carries the whole of it so far.
void addStream(const std::string& caseName, const std::string& utf8) {
    std::vector<std::string> events;
    std::vector<QString> texts;
    std::size_t bytes = 0;
    for (std::size_t size = streamStep; size < utf8.size(); size += streamStep) {
        std::size_t end = size;
        while ((static_cast<unsigned char>(utf8[end]) & 0xC0U) == 0x80U)
            ++end;
        events.push_back(utf8.substr(0, end));
        texts.push_back(QString::fromStdString(events.back()));
        bytes += end;
    }
    add("committedSource/" + caseName, bytes, [texts] {
        for (const QString& text : texts)
            benchmark::DoNotOptimize(AssistantReplyDocument::committedSource(text, false));
    });
    add("decode+committedSource/" + caseName, bytes, [events] {
        for (const std::string& event : events) {
            const QString text = QString::fromUtf8(event);
            benchmark::DoNotOptimize(AssistantReplyDocument::committedSource(text, false));
        }
    });
    add("md4c/" + caseName, bytes, [events] {
        for (const std::string& event : events)
            md4cParse(event);
    });
}

void addAll() {
    constexpr std::pair<const char*, std::size_t> sizes[] = {
        {"0.5KB", 500}, {"4KB", 4'000}, {"40KB", 40'000}, {"1MB", 1'000'000}};
    for (const Script script : {Script::Ascii, Script::Typographic, Script::Mixed}) {
        for (const auto& [name, bytes] : sizes)
            addWholeText(std::string(scriptName(script)) + '/' + name, replyText(script, bytes),
                         bytes < 1'000'000);
        addStream(std::string(scriptName(script)) + "/stream", replyText(script, 40'000));
    }
    for (int hostile = 0; hostile <= static_cast<int>(Hostile::Last); ++hostile) {
        const auto kind = static_cast<Hostile>(hostile);
        for (const std::size_t kilobytes : {64U, 128U, 256U})
            addWholeText("hostile/" + std::string(hostileName(kind)) + '/' +
                             std::to_string(kilobytes) + "KB",
                         hostileText(kind, kilobytes * 1000), false);
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    addAll();
    RatioReporter reporter("md4c");
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
