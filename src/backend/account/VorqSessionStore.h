#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace vorq {

class AppPaths;
class Defaults;
struct Session;

/// Where a session is kept between launches: the settings and one avatar file. The tokens are kept
/// as they are; settings and avatar can be read by the user alone. Main thread only.
class VorqSessionStore {
  public:
    struct Record {
        QString email;
        QString token;
        QString refreshToken;
        QString firstName;
        QString lastName;
        QString username;

        bool operator==(const Record&) const = default;
    };

    VorqSessionStore(Defaults& defaults, const AppPaths& paths);

    /// What is stored; a missing text is empty.
    [[nodiscard]] Record read() const;
    /// Takes in what other programs of the user have stored, and reads it.
    [[nodiscard]] Record readFresh();
    /// What is to be stored of the session; a username that it lacks is the stored one, if that is
    /// of the same user.
    [[nodiscard]] Record recordOf(const Session& session) const;
    /// Whether what is stored is known to belong to another user than the one with this email.
    [[nodiscard]] bool isOfAnotherUser(const QString& email) const;
    /// Stores all six texts as one change.
    void write(const Record& record);
    /// The same if the refresh token is still the one given. Gives whether it was.
    bool replace(const QString& refreshToken, const Record& record);
    /// Why new tokens could not take the place of the stored ones for good; nothing if they can.
    [[nodiscard]] std::optional<QString> whyFixed() const;
    /// Stores all but the refresh token as one change, if the token is still the one given. Gives
    /// whether it was: the refresh token of another sign-in is not for this profile.
    bool writeProfile(const QString& token, const Record& record);
    void writeEmail(const QString& email);

    /// Removes the stored texts and the avatar.
    void clear();
    /// The same if the token is still the one given. Gives whether it was: if not, another program
    /// has signed in or out or refreshed.
    bool clearIfStill(const QString& token);
    /// The folder that programs of the user lock while they refresh what is stored here.
    [[nodiscard]] QString lockFolder() const;

    /// Path of the avatar file. Creates its folder if that can be done.
    [[nodiscard]] QString profileImageURL() const;
    /// The avatar; null if there is none or it cannot be read.
    [[nodiscard]] QByteArray readProfileImage() const;
    /// Replaces the avatar in one step. Gives what went wrong, in the platform's words, or nothing.
    [[nodiscard]] QString writeProfileImage(const QByteArray& image);
    void clearProfileImage();

  private:
    Defaults& m_defaults;
    const AppPaths& m_paths;
};

} // namespace vorq
