// What the terminal prints of a growing reply, beside a bare parse of the same texts.

#include "Contest.h"
#include "ReplyCorpus.h"
#include "app/cli/ReplyPrinter.h"

#include <benchmark/benchmark.h>

namespace {

using namespace vorq;
using namespace vorq::bench;

constexpr std::size_t replySize = 100'000;

void addCase(const std::string& name, const std::string& reply) {
    const std::vector<std::string> steps = growingTexts(reply);
    std::vector<QString> texts;
    std::size_t bytes = 0;
    for (const std::string& step : steps) {
        texts.push_back(QString::fromStdString(step));
        bytes += step.size();
    }
    addContender("print", name, bytes, [texts] {
        ReplyPrinter printer;
        qsizetype printed = 0;
        for (const QString& text : texts)
            printed += printer.grow(text).size();
        printed += printer.finish(texts.back()).size();
        benchmark::DoNotOptimize(printed);
    });
    addContender("md4c", name, bytes, [steps] {
        for (const std::string& step : steps)
            md4cParse(step);
    });
}

// A paragraph, or an item of one list, to a line.
std::string linesOf(const std::string& start, const std::string& end) {
    std::string text;
    for (int number = 0; text.size() < replySize; ++number)
        text += start + std::to_string(number) + end;
    return text;
}

void addAll() {
    for (const Script script : {Script::Ascii, Script::Typographic, Script::Mixed})
        addCase(std::string(scriptName(script)) + "/print", replyText(script, replySize));
    addCase("paragraphs/print", linesOf("A paragraph of number ", ".\n\n"));
    addCase("items/print", linesOf("- an item of number ", "\n"));
    for (int hostile = 0; hostile <= static_cast<int>(Hostile::Last); ++hostile) {
        const auto kind = static_cast<Hostile>(hostile);
        addCase(std::string(hostileName(kind)) + "/print", hostileText(kind, replySize));
    }
}

} // namespace

int main(int argc, char** argv) {
    addAll();
    return runContest(argc, argv);
}
