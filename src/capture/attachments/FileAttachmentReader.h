#pragma once

#include "capture/attachments/AttachmentReader.h"

namespace vorq {

/// Reads attachments on threads of the pool.
class FileAttachmentReader final : public AttachmentReader {
  public:
    explicit FileAttachmentReader(PromptAttachment::Pipes pipes = PromptAttachment::Pipes::Refused)
        : m_pipes(pipes) {}

    QCoro::Task<AttachmentResult> read(QString path, std::stop_token stop) override;
    QCoro::Task<AttachmentResult> readPicture(QByteArray bytes, QString name,
                                              std::stop_token stop) override;

  private:
    PromptAttachment::Pipes m_pipes;
};

} // namespace vorq
