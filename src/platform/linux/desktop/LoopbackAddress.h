#pragma once

#include <QString>
#include <QUrl>

#include <cstdint>
#include <optional>

namespace vorq {

/// An address of this computer that only it can reach.
class LoopbackAddress final {
  public:
    /// Of an HTTP address; nothing if that is of another computer, or needs a certificate.
    [[nodiscard]] static std::optional<LoopbackAddress> of(const QUrl& url);

    /// In numbers, such as "127.0.0.1" or "::1".
    [[nodiscard]] const QString& host() const { return m_host; }
    [[nodiscard]] std::uint16_t port() const { return m_port; }

    /// Whether a program takes connections there. Does not wait for it to say anything.
    [[nodiscard]] bool accepts() const;

  private:
    LoopbackAddress(QString host, std::uint16_t port);

    QString m_host;
    std::uint16_t m_port;
};

} // namespace vorq
