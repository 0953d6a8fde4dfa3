#pragma once

#include "capture/attachments/PromptAttachment.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>

#include <expected>
#include <stop_token>

namespace vorq {

/// What reading an attachment gives, or a sentence for the user that says why there is none.
using AttachmentResult = std::expected<PromptAttachment, QString>;

/// Makes attachments of files and pictures. Main thread only, which is never blocked; any number of
/// readings run at once.
///
/// A reading that is stopped ends within moments, along with every program that it started; its
/// result means nothing then.
class AttachmentReader {
  public:
    AttachmentReader() = default;
    AttachmentReader(const AttachmentReader&) = delete;
    AttachmentReader& operator=(const AttachmentReader&) = delete;
    virtual ~AttachmentReader() = default;

    /// The path is absolute or of the working directory.
    virtual QCoro::Task<AttachmentResult> read(QString path, std::stop_token stop) = 0;

    /// An encoded picture that is in no file, such as one of the clipboard. The name becomes that
    /// of the attachment.
    virtual QCoro::Task<AttachmentResult> readPicture(QByteArray bytes, QString name,
                                                      std::stop_token stop) = 0;
};

} // namespace vorq
