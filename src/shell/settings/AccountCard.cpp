#include "shell/settings/AccountCard.h"

#include "backend/account/AccountSession.h"
#include "support/text/Graphemes.h"

#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

QString firstLetter(const QString& word) {
    for (const QChar character : word)
        if (character.isLetterOrNumber() || character.isSurrogate())
            return graphemePrefix(QStringView(word).sliced(word.indexOf(character)), 1)
                .toString()
                .toUpper();
    return {};
}

} // namespace

QString initialsOf(const QString& name) {
    const QStringList words = name.simplified().split(u' ', Qt::SkipEmptyParts);
    if (words.isEmpty()) return {};
    const QString first = firstLetter(words.front());
    return words.size() == 1 ? first : first + firstLetter(words.back());
}

AccountCard::AccountCard(AccountSession& account, const AvatarReader& reader)
    : m_account(account), m_reader(reader) {
    connect(&account, &AccountSession::profileChanged, this, &AccountCard::follow);
    connect(&account, &AccountSession::signedOut, this, &AccountCard::signedOut);
    follow();
}

QString AccountCard::name() const {
    return m_account.profile().displayName();
}

QString AccountCard::email() const {
    return m_account.profile().email;
}

QString AccountCard::initials() const {
    return initialsOf(name());
}

void AccountCard::signOut() {
    m_account.signOut();
}

void AccountCard::follow() {
    emit changed();
    const QByteArray& stored = m_account.profile().image;
    if (m_shown == stored) return;
    m_shown = stored;
    if (stored.isEmpty()) {
        m_task.cancel();
        m_picture.show({});
    } else {
        m_task.restart([this](std::stop_token stop) { return decode(this, std::move(stop)); });
    }
}

QCoro::Task<> AccountCard::decode(AccountCard* self, std::stop_token stop) {
    const QImage image = co_await self->m_reader.decode(self->m_shown, stop);
    if (!stop.stop_requested()) self->m_picture.show(image);
}

} // namespace vorq
