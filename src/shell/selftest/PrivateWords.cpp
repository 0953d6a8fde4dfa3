#include "shell/selftest/PrivateWords.h"

#include "backend/account/AccountSession.h"
#include "support/text/Text.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString gap = u"…"_s;

} // namespace

void PrivateWords::add(const QString& word) {
    const QString secret = trimmed(word).toString();
    if (secret.size() < 2 || m_words.contains(secret)) return;
    const auto place = std::ranges::find_if(
        m_words, [&](const QString& other) { return other.size() < secret.size(); });
    m_words.insert(place, secret);
}

// Paths first, and as a whole: of one whose first folders have gone the rest looks like none.
QString PrivateWords::without(const QString& text) const {
    static const QString below = u"(/[^\\s\"'’”,;:]*)"_s;
    static const QRegularExpression path(u"(?<![\\w/])/[\\w.+-]+"_s + below + u'+',
                                         QRegularExpression::UseUnicodePropertiesOption);
    const auto replaceWords = [&](QString& in, bool arePaths) {
        for (const QString& word : m_words) {
            if (word.startsWith(u'/') != arePaths) continue;
            const QRegularExpression secret(u"(?<!\\w)"_s + QRegularExpression::escape(word) +
                                                u"(?!\\w)"_s +
                                                (arePaths ? below + u'*' : QString()),
                                            QRegularExpression::CaseInsensitiveOption |
                                                QRegularExpression::UseUnicodePropertiesOption);
            in.replace(secret, gap);
        }
    };
    QString result = text;
    replaceWords(result, true);
    result.replace(path, gap);
    replaceWords(result, false);
    return result;
}

PrivateWords wordsOf(const AccountSession& account, const QString& home) {
    PrivateWords words;
    words.add(home);
    words.add(QFileInfo(home).fileName());
    const AccountProfile& profile = account.profile();
    if (account.signedIn()) words.add(profile.displayName());
    for (const QString& name : {profile.firstName, profile.lastName, profile.username,
                                profile.email, account.sessionToken()})
        words.add(name);
    return words;
}

} // namespace vorq
