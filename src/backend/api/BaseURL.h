#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

namespace vorq {

class AppPaths;

/// What the machine says about where the backend is.
struct BaseURLCandidates {
    /// VORQ_API_BASE_URL and TOLVA_API_BASE_URL, empty if unset.
    QString vorqVariable;
    QString tolvaVariable;
    /// Contents of the sidecar files, nothing for a file that cannot be read.
    std::optional<QByteArray> executableSidecar;
    std::optional<QByteArray> resourcesSidecar;
    std::optional<QByteArray> homeSidecar;
};

[[nodiscard]] BaseURLCandidates readBaseURLCandidates(const AppPaths& paths);

/// The backend's URL without a slash at its end, in the spelling of the candidate that gives it.
/// Characters that a URL cannot hold as they are come out percent-encoded.
[[nodiscard]] QString resolveBaseURL(const BaseURLCandidates& candidates);

/// The path, with a slash in front, as an absolute path of the base's host: a path of the base
/// itself is left out. Nothing if the path is not one.
[[nodiscard]] std::optional<QUrl> endpointURL(const QString& baseURL, const QString& path);

/// The page of the backend's website on which one signs in, or up for the modes "sign-up", "create"
/// and "signup". It stands below the path of the base, whose spelling it keeps.
[[nodiscard]] QString websiteSignInURL(const QString& baseURL, const QString& mode);

} // namespace vorq
