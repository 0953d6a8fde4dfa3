#pragma once

#include "doubles/desktop/DesktopSession.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace vorq::desktop {

inline const QString program = QStringLiteral(VORQ_PROGRAM);

/// The built program in a session of its own, without an account.
class TrayProgramTest : public testing::Test {
  protected:
    explicit TrayProgramTest(const SessionOptions& options = {.hasAccessibilityBus = false,
                                                              .isAccessibilityOn = false})
        : m_session(options) {
        m_session.write(".config/Vorq/settings.json", "{}");
    }

    DesktopProgram& start(const QStringList& arguments = {"--background"},
                          const QProcessEnvironment& additional = {}) {
        QProcessEnvironment environment;
        environment.insert("VORQ_API_BASE_URL", "http://127.0.0.1:9");
        environment.insert(additional);
        return m_session.start(m_program, "", arguments, environment);
    }

    static void waitFor(DesktopProgram& running, const QByteArray& text) {
        DesktopSession::waitUntil("\"" + text + "\"",
                                  [&] { return running.output().contains(text); });
    }

    DesktopProgram& startAndWait() {
        DesktopProgram& running = start();
        waitFor(running, "clear-chat hotkey.");
        return running;
    }

    struct Ended {
        int status;
        std::string output;
    };

    Ended runToEnd(const QStringList& arguments, const QProcessEnvironment& additional = {}) {
        DesktopProgram& running = start(arguments, additional);
        DesktopSession::waitUntil("the end of " + arguments.join(' '),
                                  [&] { return !running.isRunning(); });
        return {running.qt().exitCode(), running.output().toStdString()};
    }

    std::int32_t openTerminal() {
        m_session.start("xterm", "xterm", {"-e", "sleep", "600"});
        const auto window = m_session.waitForWindow("xterm");
        m_session.activate(window);
        return m_session.processOf(window);
    }

    [[nodiscard]] bool showsColor(const QByteArray& rgb) const { return screen().contains(rgb); }

    [[nodiscard]] QByteArray screen() const {
        return run("import", "imagemagick", {"-window", "root", "-depth", "8", "rgb:-"},
                   m_session.environment());
    }

    // Starts the program once more, which opens the menu of the one that runs.
    void startAgainForMenu() {
        const QByteArray before = screen();
        EXPECT_EQ(runToEnd({}).status, 0);
        DesktopSession::waitUntil("the menu", [&] {
            const QByteArray now = screen();
            qsizetype changed = 0;
            for (qsizetype index = 0; index < std::min(now.size(), before.size()); ++index)
                changed += now[index] != before[index];
            return changed > 20'000;
        });
    }

    static inline const QByteArray iris = "\x5b\x78\xfb";

    DesktopSession m_session;
    QString m_program = program;
};

} // namespace vorq::desktop
