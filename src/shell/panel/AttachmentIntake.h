#pragma once

#include "capture/attachments/AttachmentReader.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

class QImage;
class QMimeData;

namespace vorq {

class ClipLoader;

/// Has files and pictures read, however they come into the panel, and makes clips of them. Main
/// thread only.
class AttachmentIntake final : public QObject {
    Q_OBJECT

  public:
    /// Both must outlive this object.
    AttachmentIntake(ClipLoader& clips, AttachmentReader& reader)
        : m_clips(clips), m_reader(reader) {}

    /// Each becomes a clip, or is refused if it is no file.
    Q_INVOKABLE void attachFiles(const QList<QUrl>& files);
    /// Takes files or a picture from the clipboard; false if it holds neither.
    Q_INVOKABLE bool attachFromClipboard();
    /// Takes an encoded picture, as another program hands it over; false if it is none.
    Q_INVOKABLE bool attachPicture(const QByteArray& bytes);
    /// The format of those that another program offers in which to take a picture; "" for none.
    Q_INVOKABLE static QString pictureFormat(const QStringList& offered);

  signals:
    /// Something was chosen to be attached, and so there is nothing left to choose.
    void chosen();
    /// With a sentence why.
    void refused(const QString& sentence);

  private:
    void attachFile(const QString& path);
    void attachPicture(const QByteArray& bytes, const QString& name);
    void attachImage(const QImage& image, const QString& name);

    ClipLoader& m_clips;
    AttachmentReader& m_reader;
};

} // namespace vorq
