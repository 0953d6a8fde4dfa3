#pragma once

#include "shell/look/PanelLook.h"
#include "shell/overlay/WritingCard.h"
#include "shell/panel/PanelViewModel.h"
#include "shell/permissions/Walkthrough.h"
#include "shell/settings/SettingsViewModel.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace vorq {

/// What the pages know of the program, as the singleton `App`. Main thread only.
class UiContext final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(App)
    QML_SINGLETON
    /// Null to pages that are not of the panel.
    Q_PROPERTY(vorq::PanelViewModel* panel READ panel CONSTANT)
    /// Null to pages that are not of the settings.
    Q_PROPERTY(vorq::SettingsViewModel* settings READ settings CONSTANT)
    /// Null to pages that are not of the writing tools.
    Q_PROPERTY(vorq::WritingCard* writing READ writing CONSTANT)
    /// Null to pages that are not of the walkthrough.
    Q_PROPERTY(vorq::Walkthrough* walkthrough READ walkthrough CONSTANT)
    Q_PROPERTY(vorq::PanelLook* look READ look CONSTANT)
    /// On and off, in milliseconds; 0 for a caret that does not blink.
    Q_PROPERTY(int caretFlashTime READ caretFlashTime CONSTANT)

  public:
    /// Both must outlive the context.
    UiContext(PanelViewModel& panel, PanelLook& look) : m_panel(&panel), m_look(look) {}
    UiContext(SettingsViewModel& settings, PanelLook& look) : m_settings(&settings), m_look(look) {}
    UiContext(WritingCard& writing, PanelLook& look) : m_writing(&writing), m_look(look) {}
    UiContext(Walkthrough& walkthrough, PanelLook& look)
        : m_walkthrough(&walkthrough), m_look(look) {}

    [[nodiscard]] PanelViewModel* panel() const { return m_panel; }
    [[nodiscard]] SettingsViewModel* settings() const { return m_settings; }
    [[nodiscard]] WritingCard* writing() const { return m_writing; }
    [[nodiscard]] Walkthrough* walkthrough() const { return m_walkthrough; }
    [[nodiscard]] PanelLook* look() const { return &m_look; }
    [[nodiscard]] int caretFlashTime() const;

    /// Prepares an engine to load pages over this context, which must outlive the engine. Also call
    /// prepareUi() once, before any engine is made.
    void install(QQmlEngine& engine);

    static UiContext* create(QQmlEngine* engine, QJSEngine*);

    /// Sizes in points for a size in logical pixels, which has fractions.
    Q_INVOKABLE [[nodiscard]] double points(double pixels) const;

  private:
    PanelViewModel* m_panel = nullptr;
    SettingsViewModel* m_settings = nullptr;
    WritingCard* m_writing = nullptr;
    Walkthrough* m_walkthrough = nullptr;
    PanelLook& m_look;
};

/// Chooses how text is drawn. Before the first engine.
void prepareUi();

} // namespace vorq
