#include "doubles/shell/ShellFixture.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

AppDelegate::Ports ShellFixture::ports() {
    return {m_host,
            m_clock,
            m_defaults,
            m_workspace,
            m_hotKeys,
            m_loginItem,
            m_capture,
            m_notes,
            m_signIn,
            m_statusItem,
            [this](VorqAppState&) { return std::make_unique<ScriptedPanelPresence>(m_calls); },
            {self, u"com.vorq.desk"_s},
            [this] { m_calls += "open accessibility"; }};
}

ShellFixture::ShellFixture() : m_delegate(ports()) {
    m_workspace.launch({self, u"com.vorq.desk"_s, u"Vorq"_s});
    m_workspace.launch({editor, u"org.gnome.gedit"_s, u"Text Editor"_s});
    m_workspace.launch({browser, u"firefox-esr"_s, u"Firefox"_s});
}

void ShellFixture::launch() {
    m_delegate.applicationDidFinishLaunching({.background = true});
    m_delegate.bindAppState(state());
    m_clock.settle();
    m_calls.clear();
    m_log.clear();
}

void ShellFixture::press(std::uint32_t number, std::uint32_t signature) {
    m_hotKeys.press({signature, number});
    m_clock.settle();
}

} // namespace vorq
