#pragma once

#include "doubles/desktop/PanelProgram.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace vorq::desktop {

/// The built program with its backend and its settings, as a person and a screen reader meet them.
class SettingsProgramTest : public testing::Test {
  protected:
    using Window = DesktopSession::Window;

    explicit SettingsProgramTest(const SessionOptions& options = {}) : vorq(options) {}

    void tell(const QStringList& command) const {
        run(VORQ_PROGRAM, "", command, session.environment());
    }
    [[nodiscard]] Window settings() const { return vorq.windowTitled("Settings"); }
    void waitForSettings() const {
        DesktopSession::waitUntil("the settings with the keyboard", [this] {
            return settings() != 0 && session.activeWindow() == settings();
        });
        waitFor("Settings");
    }
    void open() {
        vorq.start();
        tell({"settings"});
        waitForSettings();
    }
    [[nodiscard]] bool shows(const QString& words) const {
        return std::ranges::any_of(vorq.controls(), [&](const AccessibleNode& node) {
            return node.isShowing && node.name == words;
        });
    }
    void waitFor(const QString& words) const {
        DesktopSession::waitUntil(words, [&] { return shows(words); });
    }
    void press(const QString& words) const {
        DesktopSession::waitUntil(words, [&] { return vorq.press(words); });
    }
    void waitForKeyboardIn(const QString& name) const {
        DesktopSession::waitUntil("the keyboard in " + name, [&] {
            const auto focused = vorq.focused();
            return focused && focused->name == name;
        });
    }
    // Into the field that has the keyboard, in place of what stands there.
    void enter(const QString& text) const {
        session.key({"ctrl+a"});
        session.type(text);
    }
    [[nodiscard]] QJsonObject stored() const {
        QFile file(session.home() + "/.config/Vorq/settings.json");
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QJsonDocument::fromJson(file.readAll()).object();
    }
    void store(const QJsonObject& settings) const {
        session.write(".config/Vorq/settings.json", QJsonDocument(settings).toJson());
    }
    [[nodiscard]] std::vector<Window> windowsOfVorq() {
        std::vector<Window> found;
        for (const Window window : session.windows())
            if (session.processOf(window) == vorq.program().process()) found.push_back(window);
        return found;
    }
    void openPrivacy() const {
        press("Privacy settings");
        waitForKeyboardIn("Email");
    }
    void changePassword(const QString& current, const QString& wanted) const {
        vorq.tabTo("Current password");
        enter(current);
        vorq.tabTo("New password");
        enter(wanted);
        vorq.tabTo("Confirm new password");
        enter(wanted);
        session.key({"Return"});
    }
    void choosePicture(const QString& path) {
        const Window window = settings();
        press("Choose a profile picture");
        DesktopSession::waitUntil("the dialog", [&] {
            const Window active = session.activeWindow();
            return active != window && active != 0 &&
                   session.processOf(active) == vorq.program().process();
        });
        session.type(path);
        session.key({"Return"});
        DesktopSession::waitUntil("the settings", [&] { return session.activeWindow() == window; });
    }
    void keep(const QString& name) const {
        const QString folder = qEnvironmentVariable("VORQ_SHOTS");
        if (folder.isEmpty()) return;
        run("import", "imagemagick", {"-window", "root", folder + "/settings-" + name + ".png"},
            session.environment());
    }

    PanelProgram vorq;
    DesktopSession& session = vorq.session;
};

} // namespace vorq::desktop
