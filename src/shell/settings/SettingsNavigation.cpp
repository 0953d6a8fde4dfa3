#include "shell/settings/SettingsNavigation.h"

#include "core/VorqAppState.h"

#include <utility>

namespace vorq {
namespace {

using Pane = SettingsNavigation::SettingsPane;

bool needsAccount(Pane pane) {
    return pane == Pane::Profile || pane == Pane::Privacy;
}

} // namespace

SettingsNavigation::SettingsNavigation(VorqAppState& state, Entries entries)
    : m_state(state), m_entries(std::move(entries)) {
    connect(&state.account(), &AccountSession::signedInChanged, this, &SettingsNavigation::follow);
    // What it was about may be gone.
    connect(&state.account(), &AccountSession::sessionLeft, this, &SettingsNavigation::keep);
    connect(&state.previews(), &Previews::changed, this, &SettingsNavigation::follow);
}

bool SettingsNavigation::isSignedIn() const {
    return m_state.account().signedIn();
}

bool SettingsNavigation::hasHub() const {
    return isSignedIn() && m_state.previews().isOn(Preview::Hub);
}

// The library is not read from its files for a Hub that is closed.
QString SettingsNavigation::hubSegment() const {
    return hasHub() ? m_state.hub().hubSegmentRaw() : QString();
}

void SettingsNavigation::setHubTapeExpanded(bool isExpanded) {
    m_isTapeExpanded = isExpanded;
    emit changed();
}

// A page of an account that is gone, and a Hub that was closed, have nothing to show.
void SettingsNavigation::follow() {
    if (!isSignedIn() && needsAccount(m_pane)) {
        m_pane = Pane::List;
        m_pending = nullptr;
    }
    if (!hasHub()) m_tab = SetupTab::Settings;
    emit changed();
}

void SettingsNavigation::show(SetupTab tab, SettingsPane pane) {
    m_tab = tab;
    m_pane = pane;
    emit changed();
}

void SettingsNavigation::leave(std::function<void()> go) {
    if (!m_entries.isUnsaved(m_pane)) return go();
    m_pending = std::move(go);
    emit changed();
}

void SettingsNavigation::open(SettingsPane pane) {
    if (needsAccount(pane) && !isSignedIn()) return;
    if (pane == m_pane && m_tab == SetupTab::Settings) return;
    leave([this, pane] { show(SetupTab::Settings, pane); });
}

void SettingsNavigation::showSettings() {
    if (m_tab != SetupTab::Settings) show(SetupTab::Settings, Pane::List);
}

void SettingsNavigation::showHub(const QString& segment) {
    if (!hasHub()) return;
    leave([this, segment] {
        m_state.hub().setHubSegmentRaw(segment);
        show(SetupTab::Library, Pane::List);
    });
}

void SettingsNavigation::requestClose() {
    leave([this] {
        show(m_tab, Pane::List);
        emit closeAllowed();
    });
}

void SettingsNavigation::requestQuit() {
    leave([this] { emit quitAllowed(); });
}

void SettingsNavigation::discard() {
    const std::function<void()> go = std::exchange(m_pending, nullptr);
    if (!go) return;
    m_entries.forget(m_pane);
    go();
}

void SettingsNavigation::keep() {
    m_pending = nullptr;
    emit changed();
}

} // namespace vorq
