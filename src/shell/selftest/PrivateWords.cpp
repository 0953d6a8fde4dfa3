#include "shell/selftest/PrivateWords.h"

#include "support/text/Text.h"

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

QString PrivateWords::without(const QString& text) const {
    static const QRegularExpression path(u"(?<![\\w/…])/[\\w.+-]+(/[^\\s\"'’”,;:]*)+"_s,
                                         QRegularExpression::UseUnicodePropertiesOption);
    QString result = text;
    for (const QString& word : m_words) {
        const QRegularExpression secret(u"(?<!\\w)"_s + QRegularExpression::escape(word) +
                                            u"(?!\\w)"_s,
                                        QRegularExpression::CaseInsensitiveOption |
                                            QRegularExpression::UseUnicodePropertiesOption);
        result.replace(secret, gap);
    }
    return result.replace(path, gap);
}

} // namespace vorq
