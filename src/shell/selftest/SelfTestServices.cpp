#include "shell/selftest/SelfTestServices.h"

#include "shell/selftest/HotKeyCheck.h"
#include "shell/selftest/ServiceChecks.h"
#include "shell/selftest/TestStage.h"
#include "shell/selftest/WindowChecks.h"

namespace vorq {

std::unique_ptr<SelfTest> makeSelfTest(const SelfTestServices& from) {
    auto stage =
        std::make_shared<TestStage>(TestStage::Services{.clock = from.clock,
                                                        .workspace = from.workspace,
                                                        .window = from.window,
                                                        .highlight = from.highlight,
                                                        .staysAfterwards = from.staysAfterwards});
    const LentClipboard clipboard{.pasteboard = from.clipboard,
                                  .staysAfterwards = from.staysAfterwards};
    SelfTest::Checks checks{
        std::make_shared<SessionCheck>(from.session, from.limits),
        std::make_shared<AccessibilityCheck>(from.clock, from.accessibility, from.privacy),
        std::make_shared<ProgramsCheck>(from.accessibility, from.privacy),
        std::make_shared<PortalCheck>(from.session),
        std::make_shared<TrayCheck>(from.tray),
        std::make_shared<NotesCheck>(from.notes),
        std::make_shared<BackendCheck>(from.api),
        std::make_shared<AccountCheck>(from.account),
        std::make_shared<ProviderCheck>(from.api, from.account),
        std::make_shared<WindowCheck>(stage),
        std::make_shared<AccessibleCaptureCheck>(from.clock, from.accessibility, stage),
        std::make_shared<HighlightCaptureCheck>(from.clock, from.primary, stage),
        std::make_shared<CopyCaptureCheck>(from.clock, from.copyShortcut, clipboard, stage),
        std::make_shared<ReplacementCheck>(from.clock, from.accessibility, from.pasteOver,
                                           clipboard, stage),
        std::make_shared<HotKeyCheck>(
            HotKeyCheck::Services{.clock = from.clock,
                                  .hotKeys = from.hotKeys,
                                  .keys = from.keys,
                                  .stage = stage,
                                  .areOfAnother = from.areHotKeysOfAnother}),
    };
    return std::make_unique<SelfTest>(from.clock, std::move(checks), std::move(stage));
}

} // namespace vorq
