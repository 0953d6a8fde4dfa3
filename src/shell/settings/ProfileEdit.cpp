#include "shell/settings/ProfileEdit.h"

#include "backend/account/AccountSession.h"
#include "backend/account/ProfileForm.h"
#include "shell/settings/AccountCard.h"
#include "support/text/Text.h"

#include <utility>

namespace vorq {

ProfileEdit::ProfileEdit(const Services& services, const AvatarReader& reader)
    : m_services(services), m_reader(reader) {
    connect(&services.account, &AccountSession::profileChanged, this, &ProfileEdit::follow);
    connect(&services.account, &AccountSession::signedOut, this, &ProfileEdit::reset);
    connect(&services.account, &AccountSession::sessionLeft, this, [this] {
        m_savesOnceRead = false;
        emit changed();
    });
    connect(&services.form, &ProfileForm::changed, this, &ProfileEdit::changed);
    connect(services.card.picture(), &AvatarPicture::changed, this, &ProfileEdit::showPicture);
    take();
    showPicture();
}

bool ProfileEdit::isUnsaved() const {
    return m_pendingAvatar || isReadingPicture() ||
           trimmed(m_firstName) != trimmed(m_former.firstName) ||
           trimmed(m_lastName) != trimmed(m_former.lastName);
}

bool ProfileEdit::isSaving() const {
    return m_savesOnceRead || m_services.form.isSaving();
}

// What the user has entered waits for the session to come back.
void ProfileEdit::follow() {
    const QString email = m_services.account.profile().email;
    const bool isAnother = !email.isEmpty() && email != m_former.email;
    if (isAnother && isUnsaved()) return reset();
    if (!isUnsaved()) take();
    emit changed();
}

void ProfileEdit::takeNames() {
    m_former = m_services.account.profile();
    m_firstName = m_former.firstName;
    m_lastName = m_former.lastName;
}

void ProfileEdit::take() {
    takeNames();
    m_pendingAvatar.reset();
    m_pictureError.clear();
}

void ProfileEdit::reset() {
    cancel();
    m_reading.cancel();
    m_refusal.clear();
    m_didSave = false;
    take();
    showPicture();
    emit changed();
}

void ProfileEdit::showPicture() {
    m_picture.show(m_pendingAvatar ? m_pendingAvatar->image : m_services.card.picture()->image());
}

void ProfileEdit::edit(QString& field, const QString& text) {
    if (field == text) return;
    field = text;
    m_refusal.clear();
    m_didSave = false;
    emit changed();
}

void ProfileEdit::setFirstName(const QString& name) {
    edit(m_firstName, name);
}

void ProfileEdit::setLastName(const QString& name) {
    edit(m_lastName, name);
}

void ProfileEdit::usePicture(const QUrl& file) {
    if (file.isLocalFile())
        startReading(file.toLocalFile());
    else
        refusePicture(tr("Choose a picture on this computer."));
}

void ProfileEdit::useDropped(const QList<QUrl>& files) {
    if (files.size() == 1)
        usePicture(files.front());
    else
        refusePicture(tr("Choose a single picture."));
}

void ProfileEdit::useDroppedPicture(const QByteArray& bytes) {
    startReading(bytes);
}

void ProfileEdit::refusePicture(const QString& sentence) {
    m_pictureError.clear();
    emit changed(); // the same sentence is told anew
    m_pictureError = sentence;
    emit changed();
}

template<typename Source>
void ProfileEdit::startReading(const Source& source) {
    m_pictureError.clear();
    m_reading.restart(
        [this, source](std::stop_token stop) { return read(this, source, std::move(stop)); });
    emit changed();
}

template<typename Source>
QCoro::Task<> ProfileEdit::read(ProfileEdit* self, Source source, std::stop_token stop) {
    auto avatar = co_await self->m_reader.read(source, stop);
    if (stop.stop_requested()) co_return;
    const bool isRead = avatar.has_value();
    if (isRead) {
        self->m_pendingAvatar = *std::move(avatar);
        self->m_refusal.clear();
        self->m_didSave = false;
        self->showPicture();
    } else {
        self->m_pictureError = avatar.error();
    }
    self->m_reading.release();
    if (std::exchange(self->m_savesOnceRead, false) && isRead) self->startSaving();
    emit self->changed();
}

void ProfileEdit::save() {
    if (isSaving() || m_saving.isRunning()) return;
    m_didSave = false;
    m_refusal.clear();
    m_savesOnceRead = isReadingPicture();
    if (!m_savesOnceRead) startSaving();
    emit changed();
}

void ProfileEdit::startSaving() {
    m_saving.restart([this](std::stop_token stop) { return save(this, std::move(stop)); });
}

QCoro::Task<> ProfileEdit::save(ProfileEdit* self, std::stop_token stop) {
    const auto avatar = self->m_pendingAvatar;
    const bool isSaved = co_await self->m_services.form.updateProfile(
        self->m_firstName, self->m_lastName, self->m_services.account.profile().username,
        avatar ? std::optional(avatar->jpeg) : std::nullopt, stop);
    if (stop.stop_requested()) co_return;
    if (isSaved) {
        self->takeNames();
        // Another one may have been chosen meanwhile.
        if (avatar && self->m_pendingAvatar && self->m_pendingAvatar->jpeg == avatar->jpeg)
            self->m_pendingAvatar.reset();
        self->m_didSave = !self->isUnsaved();
    } else {
        self->m_refusal = self->m_services.form.error();
    }
    emit self->changed();
    if (self->m_didSave) emit self->saved();
}

void ProfileEdit::cancel() {
    m_savesOnceRead = false;
    m_saving.cancel();
    emit changed();
}

} // namespace vorq
