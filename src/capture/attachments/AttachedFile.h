#pragma once

#include "capture/attachments/PromptAttachment.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <expected>
#include <memory>
#include <stop_token>

namespace vorq {

/// A file that was chosen as attachment, open for reading: what has been opened is what is read,
/// even if something else takes its place. Errors are sentences for the user. On any thread.
class AttachedFile {
  public:
    /// A larger file is refused.
    static constexpr qint64 sizeLimit = qint64{1} << 30;

    /// Devices and folders are refused and not even opened; pipes unless they may be read.
    [[nodiscard]] static std::expected<AttachedFile, QString> open(const QString& path,
                                                                   PromptAttachment::Pipes pipes);

    /// No more than so many bytes, from the beginning. Waits for what is written into a pipe until
    /// it is stopped.
    [[nodiscard]] std::expected<QByteArray, QString> read(qint64 limit,
                                                          const std::stop_token& stop);

    [[nodiscard]] bool isPipe() const { return m_isPipe; }
    [[nodiscard]] qint64 size() const { return m_file->size(); }

    /// A path that opens this very file, for as long as this object lives.
    [[nodiscard]] QString openedPath() const;

    /// "path: reason".
    [[nodiscard]] std::unexpected<QString> failure(const QString& reason) const;

  private:
    AttachedFile(QString path, std::unique_ptr<QFile> file, bool isPipe)
        : m_path(std::move(path)), m_file(std::move(file)), m_isPipe(isPipe) {}

    [[nodiscard]] std::expected<QByteArray, QString> readPipe(qint64 limit,
                                                              const std::stop_token& stop);

    QString m_path;
    std::unique_ptr<QFile> m_file;
    bool m_isPipe;
};

} // namespace vorq
