#include "core/VorqAppState.h"

#include "platform/AppPaths.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"

#include <utility>

namespace vorq {

VorqAppState::VorqAppState(const Platform& platform)
    : m_notes(platform.notes),
      m_api(platform.transport, platform.paths),
      m_model(m_api, platform.defaults),
      m_account(m_api, platform.defaults, platform.paths, platform.clock, m_model),
      m_signIn(m_account, m_api, platform.clock),
      m_profileForm(m_account, m_api),
      m_privacyForm(m_account, m_api),
      m_appearance(platform.defaults),
      m_previews(platform.defaults),
      m_panelDraft(platform.clock, platform.defaults),
      m_libraryAreas(platform.clock, platform.defaults, platform.paths.applicationSupportFolder()),
      m_panelCommands({m_libraryAreas, m_panel, m_panelChats, m_studyNotes}),
      m_panel({platform.clock, m_api, m_account, m_study, m_panelCommands}),
      m_hotKeyContext({platform.capture, m_permissions, m_panel}),
      m_panelChats({platform.clock, m_libraryAreas, m_panel, m_notes}),
      m_studyNotes({m_libraryAreas, m_study, m_panel, m_panelChats, m_account, m_api}) {
    m_study.setNoteLookup([this](const QUuid& id) -> std::optional<QString> {
        const SavedNote* note = library().savedNotes().find(id);
        return note ? std::optional(studySource(*note)) : std::nullopt;
    });
    m_libraryAreas.setNoticeHandler([this](const QString& sentence) { m_panel.answer(sentence); });
    connect(&m_study, &StudyContext::activeNoteChanged, this,
            &VorqAppState::promptPlaceholderChanged);
    connect(&m_account, &AccountSession::signedInChanged, this, &VorqAppState::accountChanged);
    connect(&m_account, &AccountSession::profileChanged, this, &VorqAppState::profileImageChanged);
    connect(&m_account, &AccountSession::signedInChanged, this, [this] {
        if (!m_account.signedIn()) m_model.forgetOffered();
    });
    restore();
    // The next user may be offered others. Whoever is restored is the one that was.
    connect(&m_account, &AccountSession::profileChanged, this,
            [this, former = m_account.profile().email]() mutable {
                const QString email = m_account.profile().email;
                if (std::exchange(former, email) != email) m_model.forgetOffered();
            });
}

void VorqAppState::restore() {
    m_libraryAreas.restore();
    m_appearance.restore();
    m_model.restore();
    m_appearance.restoreColors();
    m_account.restoreSession();
}

QImage VorqAppState::profileImage() const {
    return QImage::fromData(m_account.profile().image);
}

QString VorqAppState::promptPlaceholder() const {
    return m_study.activeStudyNoteID() ? tr("Ask about this note…") : tr("Ask Vorq for help…");
}

} // namespace vorq
