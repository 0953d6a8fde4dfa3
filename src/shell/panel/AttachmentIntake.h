#pragma once

#include "capture/attachments/AttachmentReader.h"
#include "shell/panel/PasteReader.h"
#include "support/async/TaskSlot.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

class QImage;

namespace vorq {

class ClipLoader;

/// Has files and pictures read, however they come into the panel, and makes clips of them. Main
/// thread only.
class AttachmentIntake final : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object. Without a paste reader the toolkit is asked what is pasted,
    /// which waits for the program that has copied it.
    AttachmentIntake(ClipLoader& clips, AttachmentReader& reader,
                     std::optional<PasteReader> pastes = std::nullopt)
        : m_clips(clips), m_reader(reader), m_pastes(pastes) {}

    /// Each becomes a clip, or is refused if it is no file.
    Q_INVOKABLE void attachFiles(const QList<QUrl>& files);
    /// Takes files or a picture from the clipboard; false if it holds neither. True also if it has
    /// yet to answer.
    Q_INVOKABLE bool attachFromClipboard();
    /// Whether the clipboard has yet to answer.
    [[nodiscard]] bool isPasting() const { return m_wantedPastes > 0; }
    /// Takes an encoded picture, as another program hands it over; false if it is none.
    Q_INVOKABLE bool attachPicture(const QByteArray& bytes);
    /// The format of those that another program offers in which to take a picture; "" for none.
    Q_INVOKABLE static QString pictureFormat(const QStringList& offered) {
        return PasteReader::pictureFormat(offered);
    }

  signals:
    /// Something was chosen to be attached, and so there is nothing left to choose.
    void chosen();
    /// With a sentence why.
    void refused(const QString& sentence);
    /// What is pasted is neither files nor a picture.
    void textPasted();
    /// The clipboard has answered, or does not.
    void pasteSettled(bool hasAnswered);

  private:
    static QCoro::Task<> paste(AttachmentIntake* self, PasteReader pastes, std::stop_token stop);
    void attachOffer(const PasteReader& pastes, const PasteReader::Offer& offer);
    bool attachFromToolkit();
    void attachFile(const QString& path);
    void attachPicture(const QByteArray& bytes, const QString& name);
    void attachImage(const QImage& image, const QString& name);

    ClipLoader& m_clips;
    AttachmentReader& m_reader;
    std::optional<PasteReader> m_pastes;
    int m_wantedPastes = 0;
    TaskSlot m_pasting;
};

} // namespace vorq
