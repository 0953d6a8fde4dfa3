#pragma once

#include <QLatin1StringView>
#include <QString>

#include <array>
#include <optional>

namespace vorq {

/// A model that the user can pin. The empty id leaves the choice to the backend.
struct VorqAIModelOption {
    QStringView id;
    // To be translated as of VorqAIModelOption.
    QLatin1StringView title;
    QLatin1StringView subtitle;

    static const std::array<VorqAIModelOption, 6> all;

    [[nodiscard]] static bool contains(QStringView id);

    /// The id for what an account is used for; empty for a use that is not known.
    [[nodiscard]] static QString preferredID(const QString& useCase);
};

/// The model to name in a request: none unless signed in and one is chosen.
[[nodiscard]] std::optional<QString> modelForRequest(bool signedIn, QStringView preferredModelID);

/// The id that holds after a session came in. The user's own choice stands against the session's.
[[nodiscard]] QString modelFromSession(bool userChosen, const QString& current,
                                       const std::optional<QString>& preferredModel,
                                       const std::optional<QString>& useCase);

} // namespace vorq
