#include "backend/account/VorqSessionStore.h"

#include "backend/api/Session.h"
#include "platform/AppPaths.h"
#include "platform/Defaults.h"
#include "support/files/DurableFile.h"

#include <QDir>
#include <QFile>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

const QString emailKey = u"vorq.session.email"_s;
const QString tokenKey = u"vorq.session.token"_s;
const QString refreshTokenKey = u"vorq.session.refreshToken"_s;
const QString firstNameKey = u"vorq.session.firstName"_s;
const QString lastNameKey = u"vorq.session.lastName"_s;
const QString usernameKey = u"vorq.session.username"_s;

std::vector<Defaults::Change> changesOf(const VorqSessionStore::Record& record) {
    return {{emailKey, record.email},
            {tokenKey, record.token},
            {refreshTokenKey, record.refreshToken},
            {firstNameKey, record.firstName},
            {lastNameKey, record.lastName},
            {usernameKey, record.username}};
}

std::vector<Defaults::Change> removals() {
    std::vector<Defaults::Change> changes;
    for (const QString* key :
         {&emailKey, &tokenKey, &refreshTokenKey, &firstNameKey, &lastNameKey, &usernameKey})
        changes.emplace_back(*key, QVariant());
    return changes;
}

} // namespace

VorqSessionStore::VorqSessionStore(Defaults& defaults, const AppPaths& paths)
    : m_defaults(defaults), m_paths(paths) {}

VorqSessionStore::Record VorqSessionStore::read() const {
    const auto text = [this](const QString& key) {
        return m_defaults.string(key).value_or(QString());
    };
    return {.email = text(emailKey),
            .token = text(tokenKey),
            .refreshToken = text(refreshTokenKey),
            .firstName = text(firstNameKey),
            .lastName = text(lastNameKey),
            .username = text(usernameKey)};
}

VorqSessionStore::Record VorqSessionStore::readFresh() {
    m_defaults.synchronise();
    return read();
}

VorqSessionStore::Record VorqSessionStore::recordOf(const Session& session) const {
    return {.email = session.email,
            .token = session.token,
            .refreshToken = session.refreshToken.value_or(QString()),
            .firstName = session.firstName.value_or(QString()),
            .lastName = session.lastName.value_or(QString()),
            .username = session.username                 ? *session.username
                        : isOfAnotherUser(session.email) ? QString()
                                                         : read().username};
}

bool VorqSessionStore::isOfAnotherUser(const QString& email) const {
    const QString stored = read().email;
    return !stored.isEmpty() && !email.isEmpty() && stored != email;
}

void VorqSessionStore::write(const Record& record) {
    m_defaults.apply(changesOf(record));
}

bool VorqSessionStore::replace(const QString& refreshToken, const Record& record) {
    return m_defaults.applyIf(refreshTokenKey, refreshToken, changesOf(record));
}

std::optional<QString> VorqSessionStore::whyFixed() const {
    return m_defaults.whyFixed(refreshTokenKey);
}

bool VorqSessionStore::writeProfile(const QString& token, const Record& record) {
    return m_defaults.applyIf(tokenKey, token,
                              {{emailKey, record.email},
                               {tokenKey, record.token},
                               {firstNameKey, record.firstName},
                               {lastNameKey, record.lastName},
                               {usernameKey, record.username}});
}

void VorqSessionStore::writeEmail(const QString& email) {
    m_defaults.setString(emailKey, email);
}

void VorqSessionStore::clear() {
    m_defaults.apply(removals());
    clearProfileImage();
}

bool VorqSessionStore::clearIfStill(const QString& token) {
    if (!m_defaults.applyIf(tokenKey, token, removals())) return false;
    clearProfileImage();
    return true;
}

QString VorqSessionStore::lockFolder() const {
    return m_paths.settingsFolder();
}

QString VorqSessionStore::profileImageURL() const {
    QString folder = m_paths.applicationSupportFolder();
    if (folder.isEmpty()) folder = m_paths.home() + u"/.local/share"_s;
    folder += u"/Vorq"_s;
    QDir().mkpath(folder);
    return folder + u"/profile-avatar.jpg"_s;
}

QByteArray VorqSessionStore::readProfileImage() const {
    QFile file(profileImageURL());
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray image = file.readAll();
    return image.isNull() ? QByteArray("") : image;
}

QString VorqSessionStore::writeProfileImage(const QByteArray& image) {
    const FileOutcome written = replaceFile(profileImageURL(), image, {.mindsProtection = true});
    return written ? QString() : written.error();
}

void VorqSessionStore::clearProfileImage() {
    QFile::remove(profileImageURL());
}

} // namespace vorq
