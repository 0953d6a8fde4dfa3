#include "capture/selection/SecretText.h"

#include "support/text/Text.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Pattern = QRegularExpression;

constexpr QStringView bullets = u"•●∙·⚫⬤◦▪■∗";
// What passwords have and identifiers do not, and what code is full of.
constexpr QStringView passwordSigns = u"!@#$^&*~§";
constexpr QStringView codeSigns = u"()[]{}<>;:'\"`,/\\|=+?%";
// A key in a longer text is looked for no further.
constexpr qsizetype searchedLength = qsizetype{256} * 1024;

bool matches(const Pattern& pattern, QStringView text) {
    return pattern.match(text).hasMatch();
}

bool isLetter(QChar c) {
    return c.isLetter();
}

bool hasLetter(QStringView word) {
    return std::ranges::any_of(word, isLetter);
}

bool hasDigit(QStringView word) {
    return std::ranges::any_of(word, [](QChar c) { return c.isDigit(); });
}

// Scripts without upper and lower case often write sentences without blanks, and no password.
bool hasUncasedLetter(QStringView word) {
    return std::ranges::any_of(
        word, [](QChar c) { return c.category() == QChar::Letter_Other || c.isSurrogate(); });
}

bool holdsKey(QStringView text) {
    static const Pattern block(u"-----BEGIN [A-Z ]*PRIVATE KEY"_s);
    static const Pattern format(
        u"(?<![A-Za-z0-9])(?:"
        "(?:sk-|[spr]k_(?:live|test)_|gh[pousr]_|github_pat_|glpat-|xox[abeoprs]-|AKIA|ASIA|AIza|"
        "ya29\\.|SG\\.|hf_|npm_|pypi-|dop_v1_|shpat_)(?=[\\w.-]*\\d)[\\w.-]{16,}"
        "|eyJ[\\w-]{8,}\\.[\\w-]{8,})"_s);
    const QStringView searched = text.first(std::min(text.size(), searchedLength));
    return matches(block, searched) || matches(format, searched);
}

// Without the quotation marks and brackets around it and the punctuation after it.
QStringView bareWord(QStringView word) {
    constexpr QStringView opening = u"\"'`“”„‚‘’«»‹›([{<*";
    constexpr QStringView closing = u"\"'`“”‘’«»‹›)]}>.,;:?…*&";
    while (!word.isEmpty() && opening.contains(word.front()))
        word = word.sliced(1);
    while (!word.isEmpty() && closing.contains(word.back()))
        word.chop(1);
    return word;
}

bool isAddress(QStringView word) {
    static const Pattern url(u"^(?:[a-z][a-z0-9+.-]*://|mailto:|www\\.)"_s,
                             Pattern::CaseInsensitiveOption);
    static const Pattern host(u"^(?:[a-z0-9-]+\\.)+[a-z]{2,}(?:[/:?#]|$)"_s);
    static const Pattern mail(u"^[\\w.+-]+@(?:[a-z0-9-]+\\.)+[a-z]{2,}$"_s);
    static const Pattern login(u"^[a-z][a-z0-9._-]+@[a-z][a-z-]*\\d*$"_s);
    return matches(url, word) || matches(host, word) || matches(mail, word) || matches(login, word);
}

// A password or a token within an address.
bool hasCredential(QStringView address) {
    static const Pattern user(u"^[a-z][a-z0-9+.-]*://[^/\\s:@]*:[^/\\s@]+@"_s,
                              Pattern::CaseInsensitiveOption);
    static const Pattern parameter(
        u"[?&#;](?:\\w*token|\\w*secret|\\w*password|passwd|pwd|api_?key|key|sig|"
        "signature)=[^&#\\s]{8,}"_s,
        Pattern::CaseInsensitiveOption);
    return matches(user, address) || matches(parameter, address);
}

bool isPath(QStringView word) {
    static const Pattern path(
        u"^(?:~?/[a-z.][a-z0-9._-]+(?:/|$)|~/|\\.{1,2}/|[A-Za-z]:[\\\\/][\\w. -]+(?:[\\\\/]|$))"_s);
    return matches(path, word);
}

// Forms that mix classes by their nature.
bool isKnownForm(QStringView word) {
    static const std::array forms{
        // UUID, abbreviated commit, number in hexadecimal, colour, MAC and IPv6
        Pattern(u"^[0-9a-fA-F]{8}(?:-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}$"_s),
        Pattern(u"^[0-9a-f]{7,12}(?:[~^]\\d*)*$"_s), Pattern(u"^0x[0-9a-fA-F]{1,16}$"_s),
        Pattern(u"^#[0-9a-fA-F]{3,8}$"_s),
        Pattern(u"^[0-9a-fA-F]{0,4}(?::[0-9a-fA-F]{0,4}){2,7}(?:/\\d+)?$"_s),
        // durations and sizes: 1h30m20s, 1920x1080p60
        Pattern(u"^(?:\\d+(?:ms|min|[dhmspx]))+\\d*$"_s),
        // formulae: C12H22O11
        Pattern(u"^(?:(?:C|H|N|O|S|P|F|Cl|Br|I|Na|K|Mg|Ca|Fe|Cu|Zn|Al|Si|Mn|Ag|Pb)"
                "\\d{0,2}){2,8}$"_s),
        // ancestors of commits, numbered issues, amounts, mentions, entities
        Pattern(u"^[\\w/.-]+[~^]\\d*$"_s),
        Pattern(u"^(?:issues?|pr|bug|gh|mr|ticket|no|nr|[\\w.-]+/[\\w.-]+)?#\\d+$"_s,
                Pattern::CaseInsensitiveOption),
        Pattern(u"^[A-Z]{0,3}[$€£]\\d[\\d.,]*[A-Za-z]{0,2}$"_s),
        Pattern(u"^[@#$][\\p{L}_]\\w*$"_s, Pattern::UseUnicodePropertiesOption),
        Pattern(u"^&#?\\w+;?$"_s)};
    return std::ranges::any_of(forms, [&](const Pattern& form) { return matches(form, word); });
}

// Forms of keys and tokens without a mark of their own.
bool isKeyForm(QStringView word) {
    static const std::array forms{
        // hexadecimal that is too long for a number, and Base64 that ends in padding
        Pattern(u"^(?:[0-9a-f]{32,}|[0-9A-F]{32,})$"_s),
        Pattern(u"^(?=.*[a-z])(?=.*[A-Z])[A-Za-z0-9+/]{14,}={1,2}$"_s),
        // groups of one length, most of which mix: recovery codes, licence keys
        Pattern(u"^(?=(?:.*-)?[A-Za-z0-9]*(?:\\d[A-Za-z]|[A-Za-z]\\d).*-.*"
                "(?:\\d[A-Za-z]|[A-Za-z]\\d))"
                "(?:[A-Za-z0-9]{4}(?:-[A-Za-z0-9]{4}){2,}|"
                "[A-Za-z0-9]{5}(?:-[A-Za-z0-9]{5}){2,}|"
                "[A-Za-z0-9]{6}(?:-[A-Za-z0-9]{6}){2,})$"_s)};
    return std::ranges::any_of(forms, [&](const Pattern& form) { return matches(form, word); });
}

enum class Class { Lower, Upper, Digit, Sign, Separator };

Class classOf(QChar c) {
    if (c.isDigit()) return Class::Digit;
    if (c.isUpper() || c.isTitleCase()) return Class::Upper;
    if (c.isLetter()) return Class::Lower;
    return passwordSigns.contains(c) ? Class::Sign : Class::Separator;
}

bool isLowerAt(QStringView word, qsizetype at) {
    return at < word.size() && classOf(word[at]) == Class::Lower;
}

// How often the class changes where words and camelCase do not change it, for each character.
double churn(QStringView word) {
    int changes = 0;
    for (qsizetype i = 1; i < word.size(); ++i) {
        const Class before = classOf(word[i - 1]);
        const Class after = classOf(word[i]);
        if (before == after || before == Class::Separator || after == Class::Separator) continue;
        if (before == Class::Upper && after == Class::Lower) continue;
        const bool beginsWord =
            after == Class::Upper && isLowerAt(word, i + 1) && isLowerAt(word, i + 2);
        if (!beginsWord) ++changes;
    }
    return static_cast<double>(changes) / static_cast<double>(word.size());
}

// Chance strings change their class all the time; the longer one is, the surer it shows.
bool isScrambled(QStringView word) {
    struct Limit {
        qsizetype length;
        double churn;
    };
    constexpr std::array limits{Limit{20, 0.25}, Limit{12, 0.3}, Limit{8, 0.4}};
    const auto limit =
        std::ranges::find_if(limits, [&](const Limit& each) { return word.size() >= each.length; });
    return limit != limits.end() && churn(word) >= limit->churn;
}

// The most frequent pairs of letters in European languages; four of five pairs in words are these.
bool isCommonPair(QChar first, QChar second) {
    constexpr std::string_view pairs =
        "th he in er an re on at en nd ti es or te of ed is it al ar st to nt ng se ha as ou io le "
        "ve co me de hi ri ro ic ne ea ra ce li ch ll be ma si om ur ca el ta la ns di fo ho pe ec "
        "pr no ct us ac ot il tr ly nc et ut ss so rs un lo wa ge ie wh ee wi em ad ol rt po we na "
        "ul ni ts mo ow pa im mi ai sh ir su id os iv ia am fi ci vi pl ig tu ev ld ry mp fe bl ab "
        "gh ty op wo sa ay ex ke fr oo av ag if ap gr od bo sp rd do uc bu ei ov by ";
    const auto letter = [](QChar c) { return static_cast<char>(c.toLower().unicode()); };
    if (first.unicode() > 127 || second.unicode() > 127) return true;
    const std::array pair{letter(first), letter(second), ' '};
    return pairs.find(std::string_view(pair.data(), pair.size())) != std::string_view::npos;
}

// Digits in the place of letters that they look like: "passw0rd".
bool hasDigitsForLetters(QStringView word) {
    constexpr qsizetype shortest = 8;
    constexpr QStringView digits = u"013457";
    constexpr QStringView letters = u"oieast";
    static const Pattern version(u"^v\\d"_s);
    static const Pattern structure(u"[^\\w$!@#^&*~]|_"_s);
    if (word.size() < shortest || matches(version, word) || matches(structure, word)) return false;
    for (qsizetype i = 1; i + 1 < word.size(); ++i) {
        const qsizetype digit = digits.indexOf(word[i]);
        if (digit < 0 || !word[i - 1].isLetter() || !isLowerAt(word, i + 1)) continue;
        const QChar letter = letters[digit];
        if (isCommonPair(word[i - 1], letter) && isCommonPair(letter, word[i + 1])) return true;
    }
    return false;
}

bool isWordWithNumber(QStringView word) {
    static const Pattern form(u"^\\p{L}{5,}\\d{3,}$"_s, Pattern::UseUnicodePropertiesOption);
    return matches(form, word);
}

// Letters that make no words, of both cases or with digits or signs among them.
bool isUnpronounceable(QStringView word) {
    constexpr qsizetype shortest = 8;
    constexpr int fewestPairs = 3;
    constexpr double leastChurn = 0.15;
    constexpr double leastCommon = 0.45;
    if (word.size() < shortest || churn(word) < leastChurn) return false;
    int pairs = 0;
    int common = 0;
    for (qsizetype i = 1; i < word.size(); ++i) {
        if (!word[i - 1].isLetter() || !word[i].isLetter()) continue;
        ++pairs;
        if (isCommonPair(word[i - 1], word[i])) ++common;
    }
    return pairs >= fewestPairs && common < leastCommon * pairs;
}

// Signs among letters and digits: "summer2024!", "Pa$$word".
bool hasPasswordSigns(QStringView word) {
    constexpr qsizetype shortest = 6;
    constexpr qsizetype shortestOfLetters = 8;
    const auto isAny = [](QStringView of) { return [of](QChar c) { return of.contains(c); }; };
    if (word.size() < shortest || !hasLetter(word)) return false;
    const auto codes = std::ranges::count_if(word, isAny(codeSigns));
    const auto signs = std::ranges::count_if(word, isAny(passwordSigns));
    if (hasDigit(word)) return signs >= 1 && codes == 0;
    // A sign after a word is punctuation.
    const QStringView inner = word.chopped(1).sliced(1);
    const auto innerSigns = std::ranges::count_if(inner, isAny(u"!#$^"));
    return word.size() >= shortestOfLetters && codes == 0 && innerSigns >= 2;
}

// Whether there are brackets, and each that opens is closed, as in code.
bool isBracketed(QStringView word) {
    constexpr QStringView brackets = u"()[]{}<>";
    QString open;
    bool isAny = false;
    for (const QChar c : word) {
        const qsizetype bracket = brackets.indexOf(c);
        if (bracket < 0) continue;
        isAny = true;
        if (bracket % 2 == 0) {
            open += c;
        } else {
            if (open.isEmpty() || open.back() != brackets[bracket - 1]) return false;
            open.chop(1);
        }
    }
    return isAny && open.isEmpty();
}

// Letters of both cases and digits in twos and threes between signs of all kinds.
bool isFullOfSigns(QStringView word) {
    constexpr qsizetype shortest = 8;
    if (word.size() < shortest || !hasDigit(word)) return false;
    const auto hasClass = [&](Class wanted) {
        return std::ranges::any_of(word, [&](QChar c) { return classOf(c) == wanted; });
    };
    if (!hasClass(Class::Lower) || !hasClass(Class::Upper)) return false;
    const auto signs = std::ranges::count_if(word, [](QChar c) {
        return !c.isLetterOrNumber() && !QStringView(u"./:,-_'").contains(c);
    });
    return !isBracketed(word) && signs >= 2 && 3 * signs >= word.size() - signs - 2;
}

bool isSecretWord(QStringView whole) {
    if (hasUncasedLetter(whole)) return false;
    const QStringView word = bareWord(whole);
    if (isAddress(word)) return hasCredential(word);
    if (!hasLetter(word) || isPath(word) || isKnownForm(word)) return false;
    return isKeyForm(word) || isWordWithNumber(word) || hasDigitsForLetters(word) ||
           isScrambled(word) || isUnpronounceable(word) || hasPasswordSigns(word) ||
           isFullOfSigns(word);
}

bool hasWhitespace(QStringView text) {
    return std::ranges::any_of(text, [](QChar c) { return isWhitespaceOrNewline(c.unicode()); });
}

} // namespace

bool canBePassword(QStringView text) {
    constexpr qsizetype longest = 64; // of what people type unseen
    return text.size() <= longest && !text.contains(u'\n');
}

bool looksMasked(QStringView text) {
    constexpr qsizetype fewestBullets = 2;
    constexpr qsizetype fewestStars = 3;
    qsizetype masks = 0;
    qsizetype stars = 0;
    for (const QChar c : trimmed(text)) {
        if (c == u'*')
            ++stars;
        else if (bullets.contains(c))
            ++masks;
        else if (!isBlank(c.unicode()))
            return false;
    }
    return masks >= fewestBullets || stars >= fewestStars;
}

bool looksLikeSecret(QStringView text) {
    const QStringView word = trimmed(text);
    if (word.isEmpty()) return false;
    if (looksMasked(word) || holdsKey(word)) return true;
    return !hasWhitespace(word) && isSecretWord(word);
}

} // namespace vorq
