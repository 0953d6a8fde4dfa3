#pragma once

#include "capture/attachments/PromptAttachment.h"
#include "support/async/TaskSlot.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QUrl>

#include <expected>
#include <stop_token>

namespace vorq {

class AttachmentList;

/// Makes attachments of files and pictures, however they come into the panel. Files are read off
/// the main thread. Main thread only.
class AttachmentIntake final : public QObject {
    Q_OBJECT

  public:
    /// The list must outlive this object.
    explicit AttachmentIntake(AttachmentList& attachments) : m_attachments(attachments) {}

    /// Each becomes a clip once it is read, or is refused.
    Q_INVOKABLE void attachFiles(const QList<QUrl>& files);
    /// Takes files or a picture from the clipboard; false if it holds neither.
    Q_INVOKABLE bool attachFromClipboard();
    /// Takes an encoded picture, as another program hands it over; false if it is none.
    Q_INVOKABLE bool attachPicture(const QByteArray& bytes);

  signals:
    /// Something was chosen to be attached, and so there is nothing left to choose.
    void chosen();
    /// With a sentence why.
    void refused(const QString& sentence);

  private:
    using Made = std::expected<PromptAttachment, QString>;

    QCoro::Task<> readFile(QString path, std::stop_token stop);
    // Where every way of attaching ends.
    void deliver(const Made& made);

    AttachmentList& m_attachments;
    TaskSlot m_reading; // of all files that are being read; the latest is in the slot
};

} // namespace vorq
