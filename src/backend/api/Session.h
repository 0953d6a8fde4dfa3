#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace vorq {

class JsonWriter;

/// What every auth endpoint returns.
struct Session {
    bool signedIn = false;
    QString email;
    QString token;
    std::optional<QString> refreshToken;
    std::optional<QString> firstName;
    std::optional<QString> lastName;
    std::optional<QString> username;
    std::optional<QString> useCase;
    std::optional<QString> preferredModel;
    std::optional<bool> needsEmailConfirmation;
    std::optional<QString> message;

    /// Whether requests can be made with it.
    [[nodiscard]] bool isLive() const { return signedIn && !token.isEmpty(); }

    bool operator==(const Session&) const = default;
};

[[nodiscard]] std::optional<Session> decodeSession(QByteArrayView json);
void encode(const Session& session, JsonWriter& writer);

} // namespace vorq
