#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>

#include <optional>

namespace vorq {

/// What is known of a newer version of the program.
struct AppVersionInfo {
    QString version;
    std::optional<qint64> build;
    std::optional<QString> notes;
    std::optional<bool> downloadAvailable;
    std::optional<QString> downloadPath;

    bool operator==(const AppVersionInfo&) const = default;
};

/// The place kept for updates: nothing looks for one yet. Main thread only.
class UpdateState final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString updateMessage READ updateMessage NOTIFY changed)
    Q_PROPERTY(bool isCheckingForUpdate READ isCheckingForUpdate NOTIFY changed)
    Q_PROPERTY(bool isDownloadingUpdate READ isDownloadingUpdate NOTIFY changed)

  public:
    [[nodiscard]] const std::optional<AppVersionInfo>& availableAppUpdate() const {
        return m_available;
    }
    [[nodiscard]] const QString& updateMessage() const { return m_message; }
    [[nodiscard]] bool isCheckingForUpdate() const { return m_isChecking; }
    [[nodiscard]] bool isDownloadingUpdate() const { return m_isDownloading; }
    [[nodiscard]] std::optional<QDateTime> lastUpdateCheckAt() const { return m_lastCheck; }

  signals:
    void changed();

  private:
    std::optional<AppVersionInfo> m_available;
    QString m_message;
    bool m_isChecking = false;
    bool m_isDownloading = false;
    std::optional<QDateTime> m_lastCheck;
};

} // namespace vorq
