#pragma once

#include "support/async/TaskSlot.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <cstdint>
#include <stop_token>

namespace vorq {

class AccountSession;
class PrivacyForm;

/// What the user enters on the page of the email address and the password, and which of it is
/// wrong. None of it outlives the session. Main thread only.
class PrivacyEdit final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString email READ email WRITE setEmail NOTIFY changed)
    Q_PROPERTY(QString currentPassword READ currentPassword WRITE setCurrentPassword NOTIFY changed)
    Q_PROPERTY(QString newPassword READ newPassword WRITE setNewPassword NOTIFY changed)
    Q_PROPERTY(QString confirmPassword READ confirmPassword WRITE setConfirmPassword NOTIFY changed)
    // What is wrong, as a sentence beside the field that it is about, or else about the whole.
    Q_PROPERTY(QString emailError READ emailError NOTIFY changed)
    Q_PROPERTY(QString currentError READ currentError NOTIFY changed)
    Q_PROPERTY(QString newError READ newError NOTIFY changed)
    Q_PROPERTY(QString confirmError READ confirmError NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)
    Q_PROPERTY(bool isUnsaved READ isUnsaved NOTIFY changed)
    Q_PROPERTY(bool isSaving READ isSaving NOTIFY changed)
    /// It was saved, and nothing was entered since.
    Q_PROPERTY(bool didSave READ didSave NOTIFY changed)

  public:
    /// Both must outlive this object.
    PrivacyEdit(AccountSession& account, PrivacyForm& form);

    [[nodiscard]] const QString& email() const { return m_email; }
    [[nodiscard]] const QString& currentPassword() const { return m_currentPassword; }
    [[nodiscard]] const QString& newPassword() const { return m_newPassword; }
    [[nodiscard]] const QString& confirmPassword() const { return m_confirmPassword; }
    [[nodiscard]] QString emailError() const { return errorOf(Field::Email); }
    [[nodiscard]] QString currentError() const { return errorOf(Field::Current); }
    [[nodiscard]] QString newError() const { return errorOf(Field::New); }
    [[nodiscard]] QString confirmError() const { return errorOf(Field::Confirm); }
    [[nodiscard]] QString error() const { return errorOf(Field::None); }
    [[nodiscard]] bool isUnsaved() const;
    [[nodiscard]] bool isSaving() const;
    [[nodiscard]] bool didSave() const { return m_didSave; }

    void setEmail(const QString& email) { edit(m_email, email, Field::Email); }
    void setCurrentPassword(const QString& text) { edit(m_currentPassword, text, Field::Current); }
    void setNewPassword(const QString& text) { edit(m_newPassword, text, Field::New); }
    void setConfirmPassword(const QString& text) { edit(m_confirmPassword, text, Field::Confirm); }

    /// Does nothing while it is under way.
    Q_INVOKABLE void save();
    /// Gives up the saving that is under way; what was entered stays.
    Q_INVOKABLE void cancel();
    /// Forgets what is not saved.
    Q_INVOKABLE void reset();

  signals:
    void changed();
    void saved();

  private:
    enum class Field : std::uint8_t { None, Email, Current, New, Confirm };

    [[nodiscard]] QString errorOf(Field field) const;
    [[nodiscard]] bool isEmailEdited() const;
    [[nodiscard]] bool hasNewEmail() const;
    [[nodiscard]] Field fieldOfRefusal() const;
    [[nodiscard]] Field fieldThatBackendRefused() const;
    void edit(QString& text, const QString& entered, Field field);
    void follow();
    void clearPasswords();
    void refuse(Field field, const QString& sentence);
    static QCoro::Task<> save(PrivacyEdit* self, std::stop_token stop);

    AccountSession& m_account;
    PrivacyForm& m_form;
    QString m_formerEmail; // which the field held before the user changed it
    QString m_email;
    QString m_currentPassword;
    QString m_newPassword;
    QString m_confirmPassword;
    Field m_refusedField = Field::None;
    QString m_refusal;
    bool m_didSave = false;
    TaskSlot m_saving;
};

} // namespace vorq
