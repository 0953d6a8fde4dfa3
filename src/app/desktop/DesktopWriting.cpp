#include "app/desktop/DesktopWriting.h"

#include "app/desktop/AppLog.h"
#include "app/desktop/DesktopCapture.h"
#include "capture/copy/PasteOver.h"
#include "core/VorqAppState.h"
#include "platform/DesktopLook.h"
#include "platform/DesktopPlatform.h"
#include "platform/OverlayHints.h"
#include "shell/hotkeys/HotKeyHandler.h"
#include "shell/look/PanelLook.h"
#include "shell/look/TextScale.h"
#include "shell/overlay/QuickOverlayWindow.h"
#include "shell/overlay/WritingCard.h"
#include "shell/overlay/WritingToolsOverlayController.h"
#include "ui/bindings/UiContext.h"
#include "writing/AccessibleSelectionLooker.h"

#include <QCoreApplication>
#include <QQmlEngine>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
// All that the card needs. It takes its memory, so it is there only while the preview is open.
class DesktopWriting::Tools final {
  public:
    explicit Tools(const Parts& parts)
        : m_platform(parts.platform),
          m_accessibility(parts.platform.makeAccessibility()),
          m_pasteOver(parts.capture.pasteOverServices(*m_accessibility)),
          m_replacer(m_pasteOver),
          m_looker({parts.capture.reader(), parts.capture.gate(), parts.platform.screens()}),
          m_card(parts.state.account(), parts.state.signIn(), &parts.platform.localSignIn()),
          m_look(parts.state.appearance(), PanelLook::Surface::Window),
          m_ui(m_card, m_look),
          m_window({parts.platform.screens(), parts.platform.compositor(),
                    parts.platform.overlayHints()},
                   &m_engine, WritingCard::shadowMargin),
          m_controller(
              {parts.platform.clock(), parts.platform.screens(), parts.platform.workspace(),
               parts.platform.presses(),
               static_cast<ProcessId>(QCoreApplication::applicationPid())},
              {m_window,
               m_card,
               m_looker,
               {parts.platform.clock(), parts.state.api(), parts.state.account(), m_replacer},
               [&capture = parts.capture](std::optional<ProcessId> source, std::stop_token stop) {
                   return capture.snapshots().captureSelection(source, std::nullopt, true,
                                                               std::move(stop));
               },
               [&gate = parts.capture.gate()] { return gate.isTrusted(); }}) {
        m_ui.install(m_engine);
        takeLook();
        m_window.prepare(QUrl(u"qrc:/qt/qml/Vorq/writing/WritingView.qml"_s));
        const auto follow = [this] { takeLook(); };
        QObject::connect(&m_platform.compositor(), &Compositor::changed, &m_window, follow);
        QObject::connect(&m_platform.appearance(), &DesktopAppearance::changed, &m_window, follow);
        QObject::connect(&m_window, &QWindow::screenChanged, &m_window, follow);
    }

    [[nodiscard]] WritingToolsOverlayController& controller() { return m_controller; }

  private:
    void takeLook() {
        const DesktopLook look = m_platform.appearance().look();
        m_look.setDesktop(look);
        m_look.setTextScale(
            remainingTextScale(look.textScale.value_or(1), m_window.devicePixelRatio()));
        m_look.setTranslucency(m_platform.compositor().translucency());
    }

    DesktopPlatform& m_platform;
    std::unique_ptr<Accessibility> m_accessibility;
    PasteOver m_pasteOver;
    PasteOverReplacer m_replacer;
    AccessibleSelectionLooker m_looker;
    WritingCard m_card;
    PanelLook m_look;
    UiContext m_ui;
    QQmlEngine m_engine;
    QuickOverlayWindow m_window;
    WritingToolsOverlayController m_controller;
};

DesktopWriting::DesktopWriting(const Parts& parts) : m_parts(parts) {
    connect(&m_parts.state.previews(), &Previews::changed, this, &DesktopWriting::applySwitch);
    applySwitch();
}

DesktopWriting::~DesktopWriting() {
    forgetTimer();
}

void DesktopWriting::applySwitch() {
    const bool isOn = m_parts.state.previews().isOn(Preview::Writing);
    m_parts.hotKeys.setOffersWriting(isOn);
    forgetTimer();
    if (!isOn) {
        m_tools.reset();
        return;
    }
    if (m_tools) return;
    m_timer = m_parts.platform.clock().after(delay, [this] {
        m_timer.reset();
        tools();
    });
}

DesktopWriting::Tools& DesktopWriting::tools() {
    forgetTimer();
    if (!m_tools) {
        m_tools = std::make_unique<Tools>(m_parts);
        connect(&m_tools->controller(), &WritingToolsOverlayController::sendToVorq, this,
                &DesktopWriting::sendToPanel);
    }
    return *m_tools;
}

void DesktopWriting::rewrite(std::optional<ProcessId> source) {
    if (m_parts.state.previews().isOn(Preview::Writing))
        return tools().controller().handleKey(source);
    qCInfo(appLog, "Vorq: the writing tools are closed; \"vorq preview writing on\" opens them.");
    m_parts.fail();
}

// As the panel's own key does with what it has captured.
void DesktopWriting::sendToPanel(const QString& text, std::optional<ProcessId> source) {
    m_parts.showPanel();
    HotKeyContext& context = m_parts.state.hotKeyContext();
    m_sending.restart([&context, text, source](std::stop_token stop) {
        return context.submitHotKeyContext(source, CapturedText(text), std::move(stop));
    });
}

void DesktopWriting::forgetTimer() {
    if (const auto timer = std::exchange(m_timer, std::nullopt))
        m_parts.platform.clock().cancel(*timer);
}

} // namespace vorq
