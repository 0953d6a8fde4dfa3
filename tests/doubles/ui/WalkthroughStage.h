#pragma once

#include "areas/AppearanceSettings.h"
#include "areas/Permissions.h"
#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedDefaults.h"
#include "platform/testing/ScriptedPermissionProbe.h"
#include "platform/trust/PrivacySettings.h"
#include "shell/look/PanelLook.h"
#include "shell/permissions/Walkthrough.h"
#include "shell/selftest/SelfTest.h"
#include "support/async/Wakeup.h"
#include "ui/bindings/UiContext.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

#include <memory>
#include <string>
#include <vector>

namespace vorq {

/// Settings that grant when they are told to.
class GrantingSettings final : public PrivacySettings {
  public:
    PortSupport support;
    QStringList programs;
    int opened = 0;

    [[nodiscard]] PortSupport supported() const override { return support; }
    void openPrivacyPane(const QString&) override { ++opened; }
    QCoro::Task<QStringList> programsToRestart(std::stop_token) override {
        const QStringList given = programs;
        co_return given;
    }
};

/// The window of the walkthrough without a screen, over a self-test that finds something of each
/// kind, a check whenever it is told to.
class WalkthroughStage {
  public:
    WalkthroughStage();
    ~WalkthroughStage();
    WalkthroughStage(const WalkthroughStage&) = delete;
    WalkthroughStage& operator=(const WalkthroughStage&) = delete;

    /// Shows it on a screen of that height.
    void show(int tallest = 900);
    void settle(int milliseconds = 60);
    void setDark(bool isDark);

    void grant();
    /// Lets so many checks of the test end.
    void finishChecks(int count);
    void finishTest();

    /// The first visible item of the words; null without one.
    [[nodiscard]] QQuickItem* saying(const QString& words);
    void click(const QString& words);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// What a screen reader calls what has the keyboard.
    [[nodiscard]] QString focused();
    /// What a screen reader finds: each element that shows, as "role: name".
    [[nodiscard]] std::vector<std::string> heard();

    ManualClock clock;
    ScriptedDefaults defaults;
    AppearanceSettings appearance{defaults};
    ScriptedPermissionProbe probe;
    GrantingSettings privacy;
    Permissions permissions;
    bool isLucky = false; // no check fails
    std::unique_ptr<SelfTest> test;
    PanelLook look{appearance, PanelLook::Surface::Window};
    std::unique_ptr<Walkthrough> walkthrough;
    std::unique_ptr<UiContext> context;
    std::unique_ptr<QQmlEngine> engine;
    std::unique_ptr<QQuickView> window;

  private:
    void makeTest();

    std::vector<Wakeup> m_gates; // of the checks
    std::size_t m_opened = 0;
};

} // namespace vorq
