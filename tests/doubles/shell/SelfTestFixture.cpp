#include "doubles/shell/SelfTestFixture.h"

#include "shell/selftest/TestStage.h"

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace vorq {

SelfTestFixture::SelfTestFixture() {
    m_workspace.launch({editor, u"org.gnome.gedit"_s, u"Text Editor"_s});
    m_workspace.bringToFront(editor);
    m_transport.onRequest([this](const ScriptedExchange& exchange) { answer(exchange); });
    m_hotKeys.registerHotKeys();
    m_poster.onPress = [this](const HotKeyChord& chord) {
        for (const HotKeyEntry& entry : hotKeyTable)
            if (entry.chord == chord) m_keysOfDesktop.press(entry.id);
    };
    m_copyShortcut.text = TestStage::sentence();
    scriptWindow();
    makeAnew();
}

void SelfTestFixture::scriptWindow() {
    m_accessibility.focusedName = u"text"_s;
    ScriptedElement& element = m_accessibility.element(u"text"_s);
    m_window.onOpen = [this, &element] {
        m_workspace.launch({ScriptedTestWindow::process, u"vorq-test-window"_s, u"Test"_s});
        element.text = m_window.content;
        element.range = TextRange{.location = 0, .length = m_window.content.size()};
        if (m_window.handedOut == TestWindow::HandsOut::No) return;
        m_primary.owner = ScriptedTestWindow::process;
        m_primary.highlight.text = m_window.content;
        m_highlight.writeAs(ScriptedTestWindow::process, pasteboardText(m_window.content));
    };
    m_window.onHighlight = [this, &element](TextRange range) {
        element.text = m_window.content.sliced(range.location, range.length);
        element.range = range;
    };
    m_window.onText = [this, &element] {
        const TextRange range = element.range.value_or(TextRange());
        QString held = m_window.content;
        return held.replace(range.location, QString(u"sentence"_s).size(),
                            element.text.value_or(QString()));
    };
}

SelfTestServices SelfTestFixture::services() {
    return {.clock = m_clock,
            .session = m_session,
            .limits = [this] { return m_limits; },
            .accessibility = m_accessibility,
            .privacy = m_privacy,
            .tray = [this] { return m_tray; },
            .notes = m_notesApplication,
            .api = state().api(),
            .account = state().account(),
            .workspace = m_workspace,
            .window = m_window,
            .primary = m_primary,
            .highlight = m_highlight,
            .clipboard = m_clipboard,
            .copyShortcut = m_copyShortcut,
            .pasteOver = m_pasteOver,
            .keys = m_poster,
            .hotKeys = m_hotKeys,
            .areHotKeysOfAnother = m_areHotKeysOfAnother,
            .staysAfterwards = m_staysAfterwards};
}

void SelfTestFixture::makeAnew() {
    m_test = makeSelfTest(services());
}

void SelfTestFixture::answer(const ScriptedExchange& exchange) const {
    if (m_isBackendSilent) return;
    if (m_isBackendDown) return exchange.fail(u"connection refused"_s);
    if (exchange.path() == u"/status") return exchange.respond(200, m_backendStatus);
    if (exchange.path() == u"/ai/prompt")
        return exchange.respond(m_promptStatus,
                                R"({"summary":"OK","feedback":"","corrections":"","sources":[]})");
    exchange.respond(500, "{}");
}

void SelfTestFixture::turn(std::chrono::milliseconds pace) {
    Running<QString>::turnOnce();
    m_clock.advance(pace);
}

void SelfTestFixture::runTest(std::chrono::milliseconds pace) {
    m_test->start();
    for (const QDeadlineTimer guard(60'000); m_test->isRunning(); turn(pace))
        if (guard.hasExpired()) throw std::runtime_error("the self-test does not end");
}

const SelfCheck& SelfTestFixture::resultOf(const QString& id) const {
    const auto found = std::ranges::find(m_test->results(), id, &SelfCheck::id);
    if (found == m_test->results().end())
        throw std::runtime_error("no result of " + id.toStdString());
    return *found;
}

QStringList SelfTestFixture::failures() const {
    QStringList ids;
    for (const SelfCheck& result : m_test->results())
        if (result.state == SelfCheckState::Failed) ids += result.id;
    return ids;
}

} // namespace vorq
