#pragma once

#include "capture/attachments/AttachmentReader.h"
#include "support/async/TaskSlot.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QUrl>

#include <stop_token>

namespace vorq {

class AttachmentList;

/// Has files and pictures read, however they come into the panel, and makes clips of them. Main
/// thread only.
class AttachmentIntake final : public QObject {
    Q_OBJECT

  public:
    /// Both must outlive this object.
    AttachmentIntake(AttachmentList& attachments, AttachmentReader& reader)
        : m_attachments(attachments), m_reader(reader) {}

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
    void attachPicture(QByteArray bytes, const QString& name);
    void begin(TaskSlot::Body body);
    QCoro::Task<> readFile(QString path, std::stop_token stop);
    QCoro::Task<> readPicture(QByteArray bytes, QString name, std::stop_token stop);
    // Where every way of attaching ends.
    void deliver(const AttachmentResult& result);

    AttachmentList& m_attachments;
    AttachmentReader& m_reader;
    TaskSlot m_reading; // of all files that are being read; the latest is in the slot
};

} // namespace vorq
