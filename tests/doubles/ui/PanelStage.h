#pragma once

#include "core/VorqAppState.h"
#include "doubles/backend/ScriptedTransport.h"
#include "doubles/capture/ScriptedAttachmentReader.h"
#include "doubles/capture/ScriptedCapture.h"
#include "platform/NotesBridge.h"
#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedAppPaths.h"
#include "platform/testing/ScriptedDefaults.h"
#include "platform/testing/ScriptedLocalSignIn.h"
#include "shell/look/PanelLook.h"
#include "shell/panel/PanelViewModel.h"
#include "ui/bindings/UiContext.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

#include <memory>

namespace vorq {

/// The whole panel over a scripted backend, in virtual time, signed in.
class PanelStage {
  public:
    PanelStage();
    ~PanelStage();
    PanelStage(const PanelStage&) = delete;
    PanelStage& operator=(const PanelStage&) = delete;

    /// Shows the panel in a window of its size.
    void show(QSize size = {440, 750});

    /// Lets the window take in and draw what changed.
    void settle(int milliseconds = 0);
    /// Waits until what has changed is drawn, and so stands in its place, however long that takes.
    void drawFrame();

    void say(const QString& text);
    QUuid answer(const QString& text, bool isTyping = false,
                 const std::optional<VorqFollowUp>& followUp = std::nullopt);
    QUuid work();
    void grow(const QUuid& id, const QString& text);

    [[nodiscard]] QQuickItem& root() { return *window->rootObject(); }
    /// The first item below the root of the QML type, in the order of the tree; null without one.
    [[nodiscard]] QQuickItem* find(const QString& type);
    [[nodiscard]] QList<QQuickItem*> findAll(const QString& type);
    [[nodiscard]] QQuickItem& list();

    ManualClock clock;
    ScriptedDefaults defaults;
    ScriptedAppPaths paths;
    ScriptedTransport transport{clock};
    ScriptedCapture capture;
    NoNotesBridge notes;
    ScriptedAttachmentReader reader;
    ScriptedLocalSignIn localSignIn;
    std::unique_ptr<VorqAppState> state;
    std::unique_ptr<PanelViewModel> panel;
    std::unique_ptr<PanelLook> look;
    std::unique_ptr<UiContext> context;
    std::unique_ptr<QQmlEngine> engine;
    std::unique_ptr<QQuickView> window;
};

} // namespace vorq
