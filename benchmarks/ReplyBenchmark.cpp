// AssistantReplyDocument beside other Markdown parsers, on the same texts.

#include "Contest.h"
#include "ReplyCorpus.h"
#include "rendering/AssistantReplyDocument.h"

#include <QGuiApplication>
#include <QTextDocument>

#include <benchmark/benchmark.h>
#include <cmark.h>

namespace {

using namespace vorq;
using namespace vorq::bench;

void addWholeText(const std::string& caseName, const std::string& utf8, bool withSlowPeers) {
    const QString text = QString::fromStdString(utf8);
    addContender("blocks", caseName, utf8.size(),
                 [text] { benchmark::DoNotOptimize(AssistantReplyDocument::blocks(text)); });
    addContender("committedSource", caseName, utf8.size(), [text] {
        benchmark::DoNotOptimize(AssistantReplyDocument::committedSource(text, false));
    });
    addContender("md4c", caseName, utf8.size(), [utf8] { md4cParse(utf8); });
    if (!withSlowPeers) return;
    addContender("cmark", caseName, utf8.size(), [utf8] {
        cmark_node_free(cmark_parse_document(utf8.data(), utf8.size(), CMARK_OPT_DEFAULT));
    });
    addContender("QTextDocument", caseName, utf8.size(), [text] {
        QTextDocument document;
        document.setMarkdown(text);
    });
}

// A reply that arrives in steps, where each event carries the whole of it so far.
void addStream(const std::string& caseName, const std::string& utf8) {
    const std::vector<std::string> events = growingTexts(utf8);
    std::vector<QString> texts;
    std::size_t bytes = 0;
    for (const std::string& event : events) {
        texts.push_back(QString::fromStdString(event));
        bytes += event.size();
    }
    addContender("committedSource", caseName, bytes, [texts] {
        for (const QString& text : texts)
            benchmark::DoNotOptimize(AssistantReplyDocument::committedSource(text, false));
    });
    addContender("decode+committedSource", caseName, bytes, [events] {
        for (const std::string& event : events) {
            const QString text = QString::fromUtf8(event);
            benchmark::DoNotOptimize(AssistantReplyDocument::committedSource(text, false));
        }
    });
    addContender("md4c", caseName, bytes, [events] {
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
    addAll();
    return runContest(argc, argv);
}
