#pragma once

#include "core/VorqAppState.h"
#include "doubles/backend/ScriptedTransport.h"
#include "doubles/capture/ScriptedCapture.h"
#include "doubles/writing/ScriptedReplacer.h"
#include "platform/NotesBridge.h"
#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedAppPaths.h"
#include "platform/testing/ScriptedDefaults.h"
#include "platform/testing/ScriptedLocalSignIn.h"
#include "shell/look/PanelLook.h"
#include "shell/overlay/WritingCard.h"
#include "ui/bindings/UiContext.h"
#include "writing/WritingToolsModel.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

#include <memory>

namespace vorq {

/// The card of the writing tools with a session over a scripted backend, in virtual time, signed
/// in.
class WritingStage {
  public:
    explicit WritingStage(const QString& original);
    ~WritingStage();
    WritingStage(const WritingStage&) = delete;
    WritingStage& operator=(const WritingStage&) = delete;

    /// Shows the card in a window of the size that it asks for, with the room around it.
    void show(bool pointsUp = true, double tipX = 150);
    /// Gives the window the size that the card asks for by now.
    void fit();

    /// Lets the window take in and draw what changed.
    void settle(int milliseconds = 0);

    /// Has the backend answer the ask.
    void suggest(const QString& ask, const QString& summary);
    void answer(int status, const QByteArray& body);
    /// Writes the suggestion over the selection, until that has ended.
    void replace();

    [[nodiscard]] QQuickItem& root() { return *window->rootObject(); }
    /// The first visible item with this text, or this accessible name; null without one.
    [[nodiscard]] QQuickItem* saying(const QString& words);
    void click(const QString& words);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString& text);

    ManualClock clock;
    ScriptedDefaults defaults;
    ScriptedAppPaths paths;
    ScriptedTransport transport{clock};
    ScriptedCapture capture;
    NoNotesBridge notes;
    ScriptedLocalSignIn localSignIn;
    ScriptedReplacer replacer;
    std::unique_ptr<VorqAppState> state;
    std::unique_ptr<WritingCard> card;
    std::unique_ptr<WritingToolsModel> session;
    std::unique_ptr<PanelLook> look;
    std::unique_ptr<UiContext> context;
    std::unique_ptr<QQmlEngine> engine;
    std::unique_ptr<QQuickView> window;
};

} // namespace vorq
