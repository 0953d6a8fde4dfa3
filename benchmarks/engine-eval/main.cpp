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
        std::printf("%-11s %-18s %-18s %-18s %-18s\n", "", "tuned", "held back", "late", "all");
        for (auto* rows : {&languages_, &kinds_}) {
            for (auto& [name, columns] : *rows) {
                std::printf("%-11s", name.c_str());
                for (const char* column : {"tuned", "held", "late", "all"})
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

int run(const std::vector<std::string>& arguments) {
    if (arguments.empty()) {
        std::fputs("usage: engine-eval FOLDER [--wrong] [--show [NAME]]\n", stderr);
        return 2;
    }
    const std::string mode = arguments.size() > 1 ? arguments[1] : "";
    const std::string name = arguments.size() > 2 ? arguments[2] : "";
    Report report;
    for (const EvalText& text : readEvalTexts(arguments[0])) {
        if (!name.empty() && !text.name.starts_with(name)) continue;
        if (mode == "--show") {
            show(text);
            continue;
        }
        for (const EvalQuestion& question : text.questions) {
            const std::string answer = engineAnswer(text.text, question.question);
            const bool right = isRight(question, answer);
            report.add(text, question, right,
                       isRight(question, plainAnswer(text.text, question.question)));
            if (mode == "--wrong" && !right && text.part == "tuned") {
                std::printf("%s: %s\n   got %s\n  want %s\n", text.name.c_str(),
                            question.question.c_str(), answer.c_str(),
                            question.answers.front().c_str());
            }
        }
    }
    if (mode != "--show") report.print();
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
