#include "writing/difference/WordDifference.h"

#include "support/text/Text.h"
#include "writing/difference/EditScript.h"

#include <QCoreApplication>
#include <QHash>
#include <QStringList>
#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Kind = DifferencePart::Kind;

// What is the same between two changes is passed over if it is no more than so many words, and
// shorter than either change.
constexpr std::size_t mostWordsPassedOver = 2;

bool isSpace(QStringView text) {
    return !text.isEmpty() && trimmed(text).isEmpty();
}

// A word, or a mark, with the white space behind it. White space at the beginning of a text stands
// behind an empty word.
struct Word {
    QStringView core;
    QStringView space;
};

std::vector<Word> wordsOf(QStringView text) {
    std::vector<Word> words;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text.data(), text.size());
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype next = finder.toNextBoundary();
        const qsizetype end = next < 0 ? text.size() : next;
        const QStringView piece = text.sliced(begin, end - begin);
        begin = end;
        if (!isSpace(piece)) {
            words.push_back({.core = piece, .space = {}});
            continue;
        }
        if (words.empty()) words.push_back({.core = text.first(0), .space = {}});
        QStringView& space = words.back().space;
        space = space.isEmpty() ? piece : QStringView(space.begin(), piece.end());
    }
    return words;
}

class Vocabulary {
  public:
    std::vector<std::uint32_t> numbersOf(const std::vector<Word>& words) {
        std::vector<std::uint32_t> numbers;
        numbers.reserve(words.size());
        for (const Word& word : words) {
            const auto next = static_cast<std::uint32_t>(m_numbers.size());
            auto found = m_numbers.constFind(word.core);
            if (found == m_numbers.cend()) found = m_numbers.insert(word.core, next);
            numbers.push_back(*found);
        }
        return numbers;
    }

  private:
    QHash<QStringView, std::uint32_t> m_numbers;
};

// Words of either text that stand in one another's place, or are the same.
struct Stretch {
    bool isSame = false;
    std::size_t oldBegin = 0;
    std::size_t oldEnd = 0;
    std::size_t newBegin = 0;
    std::size_t newEnd = 0;
};

std::vector<Stretch> stretchesOf(const EditScript& script) {
    const std::vector<bool>& olds = script.isKeptOfOld;
    const std::vector<bool>& news = script.isKeptOfNew;
    std::vector<Stretch> stretches;
    for (std::size_t x = 0, y = 0; x < olds.size() || y < news.size();) {
        Stretch stretch{.oldBegin = x, .newBegin = y};
        stretch.isSame = x < olds.size() && y < news.size() && olds[x] && news[y];
        while (x < olds.size() && olds[x] == stretch.isSame &&
               (!stretch.isSame || (y < news.size() && news[y]))) {
            ++x;
            if (stretch.isSame) ++y;
        }
        while (!stretch.isSame && y < news.size() && !news[y])
            ++y;
        stretch.oldEnd = x;
        stretch.newEnd = y;
        stretches.push_back(stretch);
    }
    return stretches;
}

qsizetype lengthOf(const std::vector<Word>& words, std::size_t begin, std::size_t end) {
    if (begin == end) return 0;
    return words[end - 1].space.isEmpty() ? words[end - 1].core.end() - words[begin].core.begin()
                                          : words[end - 1].space.end() - words[begin].core.begin();
}

class Comparison {
  public:
    Comparison(QStringView before, QStringView after)
        : m_old(wordsOf(before)), m_new(wordsOf(after)) {}

    std::vector<DifferencePart> run() {
        Vocabulary vocabulary;
        const std::vector<std::uint32_t> olds = vocabulary.numbersOf(m_old);
        const std::vector<std::uint32_t> news = vocabulary.numbersOf(m_new);
        for (const Stretch& stretch : merged(stretchesOf(editScript(olds, news))))
            tell(stretch);
        return std::move(m_parts);
    }

  private:
    [[nodiscard]] qsizetype size(const Stretch& stretch) const {
        return std::max(lengthOf(m_old, stretch.oldBegin, stretch.oldEnd),
                        lengthOf(m_new, stretch.newBegin, stretch.newEnd));
    }

    // Passes over the little that is the same between two changes.
    [[nodiscard]] std::vector<Stretch> merged(const std::vector<Stretch>& stretches) const {
        std::vector<Stretch> result;
        for (const Stretch& stretch : stretches) {
            const std::size_t count = result.size();
            if (!stretch.isSame && count >= 2 && isLittle(result[count - 1]) &&
                size(result[count - 1]) < std::min(size(result[count - 2]), size(stretch))) {
                result.pop_back();
                result.back().oldEnd = stretch.oldEnd;
                result.back().newEnd = stretch.newEnd;
            } else {
                result.push_back(stretch);
            }
        }
        return result;
    }
    static bool isLittle(const Stretch& stretch) {
        return stretch.isSame && stretch.oldEnd - stretch.oldBegin <= mostWordsPassedOver;
    }

    void tell(const Stretch& stretch) {
        if (stretch.isSame) {
            for (std::size_t i = 0; i < stretch.oldEnd - stretch.oldBegin; ++i)
                tellSame(m_old[stretch.oldBegin + i], m_new[stretch.newBegin + i]);
            return;
        }
        QString removed = textOf(m_old, stretch.oldBegin, stretch.oldEnd);
        QString added = textOf(m_new, stretch.newBegin, stretch.newEnd);
        // The white space behind a word that gives way to another stays.
        qsizetype common = 0;
        while (common < std::min(removed.size(), added.size()) &&
               removed[removed.size() - 1 - common] == added[added.size() - 1 - common] &&
               isWhitespaceOrNewline(removed[removed.size() - 1 - common].unicode()))
            ++common;
        const QString space = removed.last(common);
        removed.chop(common);
        added.chop(common);
        add(Kind::Removed, removed);
        add(Kind::Added, added);
        add(Kind::Same, space);
    }

    void tellSame(const Word& old, const Word& now) {
        add(Kind::Same, old.core);
        if (old.space == now.space) return add(Kind::Same, old.space);
        add(Kind::Removed, old.space);
        add(Kind::Added, now.space);
    }

    static QString textOf(const std::vector<Word>& words, std::size_t begin, std::size_t end) {
        if (begin == end) return {};
        return QStringView(words[begin].core.begin(), lengthOf(words, begin, end)).toString();
    }

    void add(Kind kind, QStringView text) {
        if (text.isEmpty()) return;
        if (m_parts.empty() || m_parts.back().kind != kind)
            m_parts.push_back({.kind = kind, .text = text.toString()});
        else
            m_parts.back().text += text;
    }

    std::vector<Word> m_old;
    std::vector<Word> m_new;
    std::vector<DifferencePart> m_parts;
};

QString translated(const char* text) {
    return QCoreApplication::translate("WordDifference", text);
}

QString named(const QString& text) {
    if (const QStringView core = trimmed(text); !core.isEmpty()) return withSingleBlanks(core);
    const bool isBreak =
        std::ranges::any_of(text, [](QChar character) { return isNewline(character.unicode()); });
    return isBreak ? translated(QT_TRANSLATE_NOOP("WordDifference", "a line break"))
                   : translated(QT_TRANSLATE_NOOP("WordDifference", "a space"));
}

} // namespace

std::vector<DifferencePart> wordDifference(QStringView before, QStringView after) {
    return Comparison(before, after).run();
}

QString spokenDifference(const std::vector<DifferencePart>& parts) {
    QStringList said;
    for (const DifferencePart& part : parts) {
        if (part.kind == Kind::Removed)
            said +=
                translated(QT_TRANSLATE_NOOP("WordDifference", "removed %1")).arg(named(part.text));
        if (part.kind == Kind::Added)
            said +=
                translated(QT_TRANSLATE_NOOP("WordDifference", "added %1")).arg(named(part.text));
    }
    if (said.isEmpty()) return translated(QT_TRANSLATE_NOOP("WordDifference", "no changes"));
    return said.join(u", "_s);
}

} // namespace vorq
