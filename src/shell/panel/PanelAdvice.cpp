#include "shell/panel/PanelAdvice.h"

#include "core/VorqAppState.h"
#include "shell/notices/Advice.h"

namespace vorq {

PanelAdvice::PanelAdvice(VorqAppState& state) : m_state(state) {
    // No bubble says why there is no reply.
    connect(&state.panel(), &PanelConversation::turnEnded, this, [this](const QUuid&, TurnEnd end) {
        if (end == TurnEnd::SignedOut) say(signInAdvice());
    });
    const HotKeyContext& context = state.hotKeyContext();
    connect(&context, &HotKeyContext::nothingCaptured, this, &PanelAdvice::tellNothingCaptured);
    connect(&context, &HotKeyContext::textCaptured, this,
            [this](const QString& application) { m_knownToShowNothing.remove(application); });
    connect(&state.permissions(), &Permissions::advised, this,
            [this] { say(accessibilityAdvice()); });
    connect(&state.permissions(), &Permissions::changed, this, &PanelAdvice::followPermissions);
    connect(&state.account(), &AccountSession::signedInChanged, this, [this] {
        if (m_sentence == signInAdvice()) clear();
    });
}

void PanelAdvice::say(const QString& sentence) {
    if (m_sentence == sentence) return;
    m_sentence = sentence;
    emit changed();
}

void PanelAdvice::tellNothingCaptured(const QString& application, CaptureMiss miss) {
    if (miss != CaptureMiss::NothingHighlighted) return say(sentenceOf(miss, application));
    if (m_knownToShowNothing.contains(application)) return clear();
    m_knownToShowNothing.insert(application);
    const QString name = application.isEmpty() ? tr("The application in front") : application;
    say(tr("%1: no highlighted text was found. Highlight some first, or copy it there and paste it "
           "here.")
            .arg(name));
}

void PanelAdvice::followPermissions() {
    const bool isGranted =
        m_state.permissions().textCapturePermission() == PermissionState::Granted;
    if (isGranted && m_sentence == accessibilityAdvice()) clear();
}

} // namespace vorq
