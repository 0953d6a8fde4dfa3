#pragma once

#include "capture/copy/PasteOver.h"
#include "shell/selftest/PrivateWords.h"
#include "shell/selftest/SelfTest.h"

#include <memory>

namespace vorq {

class DesktopCapture;
class DesktopPlatform;
class HotKeyHandler;
class VorqAppState;

/// The self-test of Vorq over the ports of the desktop. Needs a QGuiApplication.
class DesktopSelfTest final {
  public:
    /// All must outlive the test.
    struct Parts {
        DesktopPlatform& platform;
        DesktopCapture& capture;
        VorqAppState& state;
        HotKeyHandler& hotKeys;
        /// Whether this process stays after the test.
        bool staysAfterwards = true;
        bool areHotKeysOfAnother = false;
    };

    explicit DesktopSelfTest(const Parts& parts);
    ~DesktopSelfTest();

    [[nodiscard]] SelfTest& test() { return *m_test; }

    /// Ends a test that runs, and waits until everything is given back.
    void end();

    /// What is known of the user here that no report may tell.
    [[nodiscard]] PrivateWords secrets() const;

  private:
    Parts m_parts;
    std::unique_ptr<Accessibility> m_accessibility;
    PasteOver m_pasteOver;
    std::unique_ptr<SelfTest> m_test;
};

} // namespace vorq
