#pragma once

#include "capture/attachments/AttachmentReader.h"

#include <memory>

namespace vorq {

class DocumentTools;

/// Reads attachments on threads of the pool.
class FileAttachmentReader final : public AttachmentReader {
  public:
    explicit FileAttachmentReader(std::shared_ptr<DocumentTools> tools,
                                  PromptAttachment::Pipes pipes = PromptAttachment::Pipes::Refused);

    QCoro::Task<AttachmentResult> read(QString path, std::stop_token stop) override;
    QCoro::Task<AttachmentResult> readPicture(QByteArray bytes, QString name,
                                              std::stop_token stop) override;

  private:
    // Work that goes on after this object has gone has them still.
    std::shared_ptr<DocumentTools> m_tools;
    PromptAttachment::Pipes m_pipes;
};

} // namespace vorq
