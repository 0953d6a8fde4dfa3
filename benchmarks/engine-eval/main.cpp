// How often the embedded engine quotes the right sentence first, and what it makes of each text.

#include "EngineAnswer.h"
#include "EvalText.h"
#include "PlainSearch.h"
#include "engine/embedded/FlashcardMaker.h"
#include "engine/embedded/QuizMaker.h"
#include "engine/embedded/ReplyDraft.h"

#include <cstdio>
#include <exception>
#include <map>
#include <string>
#include <vector>

namespace vorq::evaluation {
namespace {

/// Right answers of both ways to find them, out of all questions.
struct Tally {
    int engine = 0;
    int plain = 0;
    int all = 0;
};

/// By language and by kind, for each part of the texts and all together.
class Report {
  public:
    Report() : columns_(kParts.begin(), kParts.end()) { columns_.emplace_back("all"); }

    void add(const EvalText& text, const EvalQuestion& question, bool engine, bool plain) {
        for (const std::string& row : {text.language, question.kind, std::string("all")}) {
            for (const std::string& column : {text.part, std::string("all")}) {
                Tally& tally = (row == question.kind ? kinds_ : languages_)[row][column];
                tally.engine += engine ? 1 : 0;
                tally.plain += plain ? 1 : 0;
                ++tally.all;
            }
        }
    }

    void print() {
        std::puts("engine % (plain BM25 %, questions)\n");
        std::printf("%-11s", "");
        for (const std::string& column : columns_)
            std::printf(" %-18s", column.c_str());
        std::puts("");
        for (auto* rows : {&languages_, &kinds_}) {
            for (auto& [name, columns] : *rows) {
                std::printf("%-11s", name.c_str());
                for (const std::string& column : columns_)
                    printCell(columns[column]);
                std::puts("");
            }
            std::puts("");
        }
    }

  private:
    using Rows = std::map<std::string, std::map<std::string, Tally>>;

    static void printCell(const Tally& tally) {
        const int all = tally.all == 0 ? 1 : tally.all;
        std::printf(" %3d (%3d, %3d)    ", tally.engine * 100 / all, tally.plain * 100 / all,
                    tally.all);
    }

    std::vector<std::string> columns_;
    Rows languages_;
    Rows kinds_;
};

/// Title, terms, labels, cards and questions, to be read by a human.
void show(const EvalText& text) {
    std::printf("######## %s\n", text.name.c_str());
    const gateway::ReplyDraft draft = gateway::draftAnalysis(text.text);
    std::printf("%s\n", draft.text().c_str());
    if (draft.followUp) {
        std::printf("? %s\n", draft.followUp->question.c_str());
        for (const std::string& label : draft.followUp->labels)
            std::printf("  [%s]\n", label.c_str());
    }
    for (const gateway::Flashcard& card : gateway::makeFlashcards(text.text)) {
        std::printf("card: %s\n   => %s\n", card.front.c_str(), card.back.c_str());
    }
    const gateway::Quiz quiz = gateway::makeQuiz({.text = text.text, .focus = {}});
    std::printf("primer: %s\n", quiz.primer.c_str());
    for (const gateway::QuizQuestion& question : quiz.questions) {
        std::printf("quiz: %s\n   => ", question.prompt.c_str());
        for (const std::string& option : question.options)
            std::printf("| %s ", option.c_str());
        std::puts("|");
    }
}

constexpr std::string_view kUsage =
    "usage: engine-eval FOLDER [--sealed] [--wrong | --show] [NAME]\n"
    "  --sealed  measure the sealed texts too; never lists their answers\n"
    "  --wrong   list what went wrong in the texts that the engine may be set by\n"
    "  --show    print titles, terms, labels, cards and quiz questions instead\n"
    "  NAME      only the texts whose name begins so\n";

struct Options {
    std::filesystem::path folder;
    std::string name;
    bool sealed = false;
    bool wrong = false;
    bool show = false;
};

Options optionsIn(const std::vector<std::string>& arguments) {
    Options options;
    for (const std::string& argument : arguments) {
        if (argument == "--sealed") {
            options.sealed = true;
        } else if (argument == "--wrong") {
            options.wrong = true;
        } else if (argument == "--show") {
            options.show = true;
        } else if (options.folder.empty()) {
            options.folder = argument;
        } else {
            options.name = argument;
        }
    }
    return options;
}

bool mayBeLookedAt(const EvalText& text) {
    return text.part == "tuned" || text.part == "fresh";
}

void measure(const EvalText& text, bool listsWrong, Report& report) {
    for (const EvalQuestion& question : text.questions) {
        const std::string answer = engineAnswer(text.text, question.question);
        const bool right = isRight(question, answer);
        report.add(text, question, right,
                   isRight(question, plainAnswer(text.text, question.question)));
        if (right || !listsWrong || !mayBeLookedAt(text)) continue;
        std::printf("%s: %s\n   got %s\n  want %s\n", text.name.c_str(), question.question.c_str(),
                    answer.c_str(), question.answers.front().c_str());
    }
}

int run(const std::vector<std::string>& arguments) {
    const Options options = optionsIn(arguments);
    if (options.folder.empty()) {
        std::fputs(kUsage.data(), stderr);
        return 2;
    }
    Report report;
    for (const EvalText& text : readEvalTexts(options.folder)) {
        if (!text.name.starts_with(options.name)) continue;
        if (text.part == "sealed" && !options.sealed) continue;
        if (options.show) {
            show(text);
        } else {
            measure(text, options.wrong, report);
        }
    }
    if (!options.show) report.print();
    return 0;
}

} // namespace
} // namespace vorq::evaluation

int main(int argc, char** argv) {
    try {
        return vorq::evaluation::run({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "engine-eval: %s\n", error.what());
        return 1;
    }
}
