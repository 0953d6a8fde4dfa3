#include "shell/settings/PrivacyEdit.h"

#include "backend/account/AccountSession.h"
#include "backend/account/PrivacyForm.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <utility>

namespace vorq {

PrivacyEdit::PrivacyEdit(AccountSession& account, PrivacyForm& form)
    : m_account(account),
      m_form(form),
      m_formerEmail(account.profile().email),
      m_email(m_formerEmail) {
    connect(&account, &AccountSession::profileChanged, this, &PrivacyEdit::follow);
    connect(&account, &AccountSession::sessionLeft, this, &PrivacyEdit::reset);
    connect(&form, &PrivacyForm::changed, this, &PrivacyEdit::changed);
}

bool PrivacyEdit::isEmailEdited() const {
    return trimmed(m_email).compare(trimmed(m_formerEmail), Qt::CaseInsensitive) != 0;
}

bool PrivacyEdit::hasNewEmail() const {
    return isEmailEdited() && !trimmed(m_email).isEmpty();
}

bool PrivacyEdit::isUnsaved() const {
    return hasNewEmail() || !m_currentPassword.isEmpty() || !m_newPassword.isEmpty() ||
           !m_confirmPassword.isEmpty();
}

bool PrivacyEdit::isSaving() const {
    return m_form.isSaving();
}

QString PrivacyEdit::errorOf(Field field) const {
    return field == m_refusedField ? m_refusal : QString();
}

void PrivacyEdit::refuse(Field field, const QString& sentence) {
    m_refusedField = field;
    m_refusal = sentence;
    emit changed();
}

// Another address may be another user, who must not find what the former has entered.
void PrivacyEdit::follow() {
    const bool isAnother = m_account.profile().email != m_formerEmail;
    if (isAnother && !isSaving() && isUnsaved()) return reset();
    const bool isKept = isEmailEdited();
    m_formerEmail = m_account.profile().email;
    if (!isKept) m_email = m_formerEmail;
    emit changed();
}

void PrivacyEdit::edit(QString& text, const QString& entered, Field field) {
    if (text == entered) return;
    text = entered;
    m_didSave = false;
    // Two fields together decide whether these are right.
    const bool isOfBoth = m_refusedField == Field::Confirm && field == Field::New;
    if (m_refusedField == field || m_refusedField == Field::None || isOfBoth) m_refusal.clear();
    emit changed();
}

void PrivacyEdit::clearPasswords() {
    m_currentPassword.clear();
    m_newPassword.clear();
    m_confirmPassword.clear();
}

void PrivacyEdit::reset() {
    cancel();
    clearPasswords();
    m_formerEmail = m_account.profile().email;
    m_email = m_formerEmail;
    m_didSave = false;
    refuse(Field::None, {});
}

void PrivacyEdit::save() {
    if (isSaving() || m_saving.isRunning()) return;
    m_didSave = false;
    refuse(Field::None, {});
    if (!m_newPassword.isEmpty() && m_newPassword != m_confirmPassword)
        return refuse(Field::Confirm, tr("New password and confirmation do not match."));
    m_saving.restart([this](std::stop_token stop) { return save(this, std::move(stop)); });
}

// The order in which the form looks at the fields; of what it accepts the backend has the say.
PrivacyEdit::Field PrivacyEdit::fieldOfRefusal() const {
    if (m_currentPassword.isEmpty()) return Field::Current;
    if (!hasNewEmail() && m_newPassword.isEmpty()) return Field::Email;
    if (!m_newPassword.isEmpty() &&
        !graphemeCountAtLeast(m_newPassword, PrivacyForm::shortestPassword))
        return Field::New;
    return Field::None;
}

PrivacyEdit::Field PrivacyEdit::fieldThatBackendRefused() const {
    const QString& name = m_form.refusedField();
    if (name == u"email") return Field::Email;
    if (name == u"currentPassword") return Field::Current;
    if (name == u"newPassword") return Field::New;
    return Field::None;
}

QCoro::Task<> PrivacyEdit::save(PrivacyEdit* self, std::stop_token stop) {
    const Field field = self->fieldOfRefusal();
    const QString email = self->hasNewEmail() ? self->m_email : QString();
    const bool isSaved = co_await self->m_form.updatePrivacy(email, self->m_currentPassword,
                                                             self->m_newPassword, stop);
    if (stop.stop_requested()) co_return;
    if (!isSaved) {
        const bool isOwn = field != Field::None;
        co_return self->refuse(isOwn ? field : self->fieldThatBackendRefused(),
                               self->m_form.error());
    }
    self->clearPasswords();
    self->m_formerEmail = self->m_account.profile().email;
    self->m_email = self->m_formerEmail;
    self->m_didSave = true;
    emit self->changed();
    emit self->saved();
}

void PrivacyEdit::cancel() {
    m_saving.cancel();
    emit changed();
}

} // namespace vorq
