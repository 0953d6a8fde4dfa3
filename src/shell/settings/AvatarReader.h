#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QImage>
#include <QString>

#include <expected>
#include <memory>
#include <stop_token>

namespace vorq {

class DocumentTools;

/// Makes pictures of the user of what files hold. Nobody vouches for these files, nor for the one
/// that is stored, so that all decoding is done beside the program. Main thread only.
class AvatarReader final {
  public:
    /// What is shown, and the same as it is stored.
    struct Avatar {
        QByteArray jpeg;
        QImage image;
    };

    explicit AvatarReader(std::shared_ptr<DocumentTools> tools) : m_tools(std::move(tools)) {}

    /// Of a file that the user has chosen. The error is a sentence.
    [[nodiscard]] QCoro::Task<std::expected<Avatar, QString>> read(QString path,
                                                                   std::stop_token stop) const;

    /// Of what another program hands over without a file.
    [[nodiscard]] QCoro::Task<std::expected<Avatar, QString>> read(QByteArray bytes,
                                                                   std::stop_token stop) const;

    /// Of one that is stored; null if it shows nothing.
    [[nodiscard]] QCoro::Task<QImage> decode(QByteArray stored, std::stop_token stop) const;

  private:
    std::shared_ptr<DocumentTools> m_tools;
};

} // namespace vorq
