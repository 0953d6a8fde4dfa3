#pragma once

#include "backend/account/AccountProfile.h"
#include "shell/panel/PasteReader.h"
#include "shell/settings/AvatarPicture.h"
#include "shell/settings/AvatarReader.h"
#include "support/async/TaskSlot.h"

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>
#include <stop_token>

namespace vorq {

class AccountCard;
class AccountSession;
class ProfileForm;

/// What the user enters on the page of the profile. What is not saved yet outlives the page and the
/// end of a session, unless another user comes or the user signs out. Main thread only.
class ProfileEdit final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString firstName READ firstName WRITE setFirstName NOTIFY changed)
    Q_PROPERTY(QString lastName READ lastName WRITE setLastName NOTIFY changed)
    /// The one that is chosen, else the stored one.
    Q_PROPERTY(vorq::AvatarPicture* picture READ picture CONSTANT)
    Q_PROPERTY(bool isReadingPicture READ isReadingPicture NOTIFY changed)
    Q_PROPERTY(QString pictureError READ pictureError NOTIFY changed)
    Q_PROPERTY(bool isUnsaved READ isUnsaved NOTIFY changed)
    Q_PROPERTY(bool isSaving READ isSaving NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)
    /// All was saved, and nothing was changed since.
    Q_PROPERTY(bool didSave READ didSave NOTIFY changed)

  public:
    /// All must outlive this object.
    struct Services {
        AccountSession& account;
        ProfileForm& form;
        AccountCard& card;
    };

    ProfileEdit(const Services& services, const AvatarReader& reader);

    [[nodiscard]] const QString& firstName() const { return m_firstName; }
    [[nodiscard]] const QString& lastName() const { return m_lastName; }
    [[nodiscard]] AvatarPicture* picture() { return &m_picture; }
    [[nodiscard]] bool isReadingPicture() const { return m_reading.isRunning(); }
    [[nodiscard]] const QString& pictureError() const { return m_pictureError; }
    [[nodiscard]] bool isUnsaved() const;
    [[nodiscard]] bool isSaving() const;
    [[nodiscard]] const QString& error() const { return m_refusal; }
    [[nodiscard]] bool didSave() const { return m_didSave; }

    void setFirstName(const QString& name);
    void setLastName(const QString& name);

    /// Takes a picture from a file of this computer. If it is none, what was chosen before stays.
    Q_INVOKABLE void usePicture(const QUrl& file);
    /// The same of what is dropped: one file, or an encoded picture without a file.
    Q_INVOKABLE void useDropped(const QList<QUrl>& files);
    Q_INVOKABLE void useDroppedPicture(const QByteArray& bytes);
    /// The format of those that another program offers in which to take a picture; "" for none.
    Q_INVOKABLE static QString pictureFormat(const QStringList& offered) {
        return PasteReader::pictureFormat(offered);
    }

    /// Waits for a picture that is being read; without one that cannot be read nothing is saved.
    /// Does nothing while it is under way.
    Q_INVOKABLE void save();
    /// Gives up the saving that is under way; what was entered stays.
    Q_INVOKABLE void cancel();
    /// Forgets what is not saved.
    Q_INVOKABLE void reset();

  signals:
    void changed();
    /// All that is entered.
    void saved();

  private:
    void follow();
    void take();
    void takeNames();
    void showPicture();
    void startSaving();
    void edit(QString& field, const QString& text);
    template<typename Source>
    void startReading(const Source& source);
    template<typename Source>
    static QCoro::Task<> read(ProfileEdit* self, Source source, std::stop_token stop);
    void refusePicture(const QString& sentence);
    static QCoro::Task<> save(ProfileEdit* self, std::stop_token stop);

    Services m_services;
    AvatarReader m_reader;
    AvatarPicture m_picture;
    AccountProfile m_former; // what is edited
    QString m_firstName;
    QString m_lastName;
    std::optional<AvatarReader::Avatar> m_pendingAvatar;
    QString m_pictureError;
    QString m_refusal;
    bool m_savesOnceRead = false; // the picture
    bool m_didSave = false;
    TaskSlot m_reading;
    TaskSlot m_saving;
};

} // namespace vorq
