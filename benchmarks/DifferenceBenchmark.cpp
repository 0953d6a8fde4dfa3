// The difference of two texts word by word, as the card of the writing tools shows it, beside the
// table of all prefixes, which finds the least difference but not quickly, and the splitting into
// words alone. A suggestion has to show within one frame: 16 ms for texts of 5 000 words.

#include "Contest.h"
#include "writing/difference/WordDifference.h"

#include <QHash>
#include <QTextBoundaryFinder>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <random>

using namespace vorq;
using namespace vorq::bench;

namespace {

constexpr int wordCount = 5000;

using Words = std::vector<std::uint32_t>;

Words randomWords(std::minstd_rand& random, std::uint32_t kinds) {
    Words words(wordCount);
    // As in language, a few words are most of it.
    for (std::uint32_t& word : words) {
        const auto share = static_cast<std::uint32_t>(random() % kinds);
        word = random() % 2 == 0 ? share % (kinds / 20 + 1) : share;
    }
    return words;
}

/// Some words in a hundred changed, left out or put in.
Words edited(const Words& words, std::minstd_rand& random, unsigned percent) {
    Words result;
    for (const std::uint32_t word : words) {
        if (random() % 100 >= percent) {
            result.push_back(word);
            continue;
        }
        const auto way = random() % 3;
        if (way != 0) result.push_back(static_cast<std::uint32_t>(random() % 1000));
        if (way == 1) result.push_back(word);
    }
    return result;
}

QString textOf(const Words& words, char16_t letter) {
    QString text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        text += QChar(letter);
        text += QString::number(words[i], 36);
        text += i % 17 == 16 ? QStringLiteral(". ") : QStringLiteral(" ");
    }
    return text;
}

std::size_t mostInCommon(const Words& one, const Words& other) {
    std::vector<std::size_t> row(other.size() + 1);
    for (const std::uint32_t word : one) {
        std::size_t diagonal = 0;
        for (std::size_t i = 0; i < other.size(); ++i) {
            const std::size_t above = row[i + 1];
            row[i + 1] = word == other[i] ? diagonal + 1 : std::max(above, row[i]);
            diagonal = above;
        }
    }
    return row.back();
}

std::size_t boundaries(const QString& text) {
    std::size_t count = 0;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    while (finder.toNextBoundary() >= 0)
        ++count;
    return count;
}

struct Pair {
    Words oldWords;
    Words newWords;
    QString before;
    QString after;
};

void addPair(const std::string& name, const Words& before, const Words& after,
             char16_t letterAfter = u'w') {
    const auto pair = std::make_shared<const Pair>(
        Pair{before, after, textOf(before, u'w'), textOf(after, letterAfter)});
    const auto bytes = static_cast<std::size_t>(pair->before.size() + pair->after.size());
    addContender("wordDifference", name, bytes,
                 [pair] { benchmark::DoNotOptimize(wordDifference(pair->before, pair->after)); });
    addContender("table", name, bytes, [pair] {
        benchmark::DoNotOptimize(mostInCommon(pair->oldWords, pair->newWords));
    });
    addContender("boundaries", name, bytes, [pair] {
        benchmark::DoNotOptimize(boundaries(pair->before) + boundaries(pair->after));
    });
}

} // namespace

int main(int argc, char** argv) {
    std::minstd_rand random(3);
    const Words text = randomWords(random, 1000);
    addPair("corrected", text, edited(text, random, 3));
    addPair("rewritten", text, edited(text, random, 40));
    addPair("another-text", text, randomWords(random, 1000));
    addPair("another-language", text, randomWords(random, 1000), u'x');
    // What is hardest: the same few words, everywhere.
    addPair("few-words", randomWords(random, 4), randomWords(random, 4));
    return runContest(argc, argv, {"table"});
}
