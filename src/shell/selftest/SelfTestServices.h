#pragma once

#include "shell/selftest/SelfTest.h"
#include "shell/selftest/SessionChecks.h"

namespace vorq {

class AccountSession;
class CopyShortcut;
class HotKeyHandler;
class KeyPoster;
class NotesBridge;
class Pasteboard;
class PasteOver;
class PrimarySelection;
class TestWindow;
class VorqAPIService;
class Workspace;

/// What the self-test looks at. All must outlive it and what it has under way.
struct SelfTestServices {
    Clock& clock;
    SessionFacts& session;
    SessionCheck::Limits limits;
    /// Read by the test alone.
    Accessibility& accessibility;
    PrivacySettings& privacy;
    TrayCheck::Tray tray;
    NotesBridge& notes;
    VorqAPIService& api;
    AccountSession& account;
    Workspace& workspace;
    TestWindow& window;
    PrimarySelection& primary;
    Pasteboard& highlight;
    Pasteboard& clipboard;
    CopyShortcut& copyShortcut;
    PasteOver& pasteOver;
    KeyPoster& keys;
    HotKeyHandler& hotKeys;
    /// Whether another Vorq has them, so that this one must not be judged by them.
    bool areHotKeysOfAnother = false;
    /// Whether this process is there after the test, to hand out what it gives back to clipboard
    /// and highlight.
    bool staysAfterwards = true;
};

/// All checks, what needs the window last, so that it is open for a moment only.
[[nodiscard]] std::unique_ptr<SelfTest> makeSelfTest(const SelfTestServices& services);

} // namespace vorq
