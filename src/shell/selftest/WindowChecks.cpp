#include "shell/selftest/WindowChecks.h"

#include "capture/copy/PasteOver.h"
#include "capture/selection/AccessibleSelection.h"
#include "capture/selection/CopyShortcut.h"
#include "platform/PrimarySelection.h"
#include "platform/copying/TimeLimit.h"
#include "shell/selftest/TestStage.h"
#include "support/text/Text.h"

#include <QCoreApplication>

#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

// A window that has just opened tells of itself a moment later.
constexpr auto readingLimit = 4s;
constexpr auto readingRound = 60ms;
constexpr auto oneReading = 1s;
constexpr auto clipboardLimit = 1s;

const QString testedWord = u"sentence"_s;
const QString otherWord = u"paragraph"_s;

SelfTestText withoutWindow() {
    return {QT_TRANSLATE_NOOP("SelfTest", "The test window is not open.")};
}

SelfTestText windowLeft() {
    return {QT_TRANSLATE_NOOP("SelfTest", "Another window came to the front.")};
}

SelfTestText leaveAlone() {
    return {QT_TRANSLATE_NOOP("SelfTest",
                              "Run it again, and leave keyboard and mouse alone meanwhile.")};
}

SelfTestText clipboardInUse() {
    return {QT_TRANSLATE_NOOP("SelfTest", "What is on the clipboard could not be given back, so it "
                                          "was left alone.")};
}

using Read = std::function<QString(const std::stop_token&)>;

// Reads until that is the text, on the thread. Gives what was read last.
QCoro::Task<QString> readUntil(Clock& clock, CaptureThread& thread, Read read, QString wanted,
                               std::stop_token stop) {
    QString last;
    const Clock::Duration end = clock.now() + readingLimit;
    while (!stop.stop_requested() && clock.now() < end) {
        const auto text = std::make_shared<QString>();
        CaptureThread::Job job = [read, text](const std::stop_token& running) {
            *text = read(running);
        };
        const bool isInTime = co_await thread.run(std::move(job), oneReading, stop);
        if (isInTime) last = *text;
        if (isInTime && last == wanted) break;
        co_await sleepFor(clock, readingRound, stop);
    }
    co_return last;
}

Read selectionOf(Accessibility& accessibility, ProcessId process) {
    return [&accessibility, process](const std::stop_token& stop) {
        return captureSelectedTextFromFocusedElement(
            {.accessibility = accessibility, .process = process, .stop = stop});
    };
}

// Whether the clipboard may be lent: what is there outlives the test, or there is nothing.
QCoro::Task<bool> mayLend(Clock& clock, LentClipboard clipboard) {
    if (clipboard.staysAfterwards) co_return true;
    const TimeLimit limit(clock, clipboardLimit, {});
    const auto forms = co_await clipboard.pasteboard.formNames(limit.token());
    co_return forms && forms->isEmpty();
}

} // namespace

QCoro::Task<SelfCheck> WindowCheck::run(std::stop_token stop) {
    SelfCheck result = ok({QT_TRANSLATE_NOOP("SelfTest", "A test window opened and has the "
                                                         "keyboard.")});
    if (const PortSupport support = m_stage->window().supported(); !support) {
        result = skipped(SelfTestText{"%1", {support.error()}});
        co_return result;
    }
    const TestStage::Setting setting = co_await m_stage->set(std::move(stop));
    if (setting == TestStage::Setting::NoWindow)
        result = failed({QT_TRANSLATE_NOOP("SelfTest", "The test window did not open.")});
    if (setting == TestStage::Setting::NotInFront)
        result = warning(
            {QT_TRANSLATE_NOOP("SelfTest", "The test window did not get the keyboard, so that not "
                                           "everything could be tested.")},
            leaveAlone());
    co_return result;
}

AccessibleCaptureCheck::AccessibleCaptureCheck(Clock& clock, Accessibility& accessibility,
                                               std::shared_ptr<TestStage> stage)
    : m_clock(clock), m_accessibility(accessibility), m_stage(std::move(stage)), m_thread(clock) {}

QCoro::Task<SelfCheck> AccessibleCaptureCheck::run(std::stop_token stop) {
    SelfCheck result =
        ok({QT_TRANSLATE_NOOP("SelfTest", "Highlighted text is read by accessibility.")});
    const auto process = m_stage->process();
    if (!process) {
        result = skipped(withoutWindow());
        co_return result;
    }
    if (!m_accessibility.isTrusted()) {
        result = skipped({QT_TRANSLATE_NOOP("SelfTest", "Accessibility is off.")});
        co_return result;
    }
    const QString wanted = TestStage::sentence();
    const QString text = co_await readUntil(
        m_clock, m_thread, selectionOf(m_accessibility, *process), wanted, std::move(stop));
    if (text == wanted) co_return result;
    if (!m_stage->isInFront())
        result = skipped(windowLeft(), leaveAlone());
    else
        result = failed(
            {QT_TRANSLATE_NOOP("SelfTest",
                               "The test window's text was not read by accessibility.")},
            {QT_TRANSLATE_NOOP("SelfTest", "Log out and in again, so that all programs learn that "
                                           "accessibility is on.")});
    co_return result;
}

HighlightCaptureCheck::HighlightCaptureCheck(Clock& clock, PrimarySelection& primary,
                                             std::shared_ptr<TestStage> stage)
    : m_clock(clock), m_primary(primary), m_stage(std::move(stage)), m_thread(clock) {}

QCoro::Task<SelfCheck> HighlightCaptureCheck::run(std::stop_token stop) {
    SelfCheck result =
        ok({QT_TRANSLATE_NOOP("SelfTest", "Highlighted text is read as the PRIMARY selection.")});
    const auto process = m_stage->process();
    const PortSupport support = m_primary.supported();
    if (!process) {
        result = skipped(withoutWindow());
    } else if (!support) {
        result = skipped(SelfTestText{"%1", {support.error()}});
    } else if (!m_stage->isHandedOut()) {
        result = skipped(
            {QT_TRANSLATE_NOOP("SelfTest", "What is highlighted now could not be given back, so it "
                                           "was left alone.")});
    } else {
        Read read = [&primary = m_primary, process = *process](const std::stop_token& running) {
            const auto highlight = primary.highlightOf(process, running);
            return highlight ? trimmed(highlight->text).toString() : QString();
        };
        const QString wanted = TestStage::sentence();
        const QString text =
            co_await readUntil(m_clock, m_thread, std::move(read), wanted, std::move(stop));
        if (text != wanted)
            result = failed({QT_TRANSLATE_NOOP(
                "SelfTest", "The test window's text was not read as the PRIMARY selection.")});
    }
    co_return result;
}

QCoro::Task<SelfCheck> CopyCaptureCheck::run(std::stop_token stop) {
    SelfCheck result = ok({QT_TRANSLATE_NOOP(
        "SelfTest", "Highlighted text is read by the copy shortcut, and the clipboard given "
                    "back.")});
    const auto process = m_stage->process();
    const PortSupport support = m_clipboard.pasteboard.supported();
    const bool mayCopy = process && support && co_await mayLend(m_clock, m_clipboard);
    if (!process) {
        result = skipped(withoutWindow());
    } else if (!support) {
        result = skipped(SelfTestText{"%1", {support.error()}});
    } else if (!mayCopy) {
        result = skipped(clipboardInUse(),
                         {QT_TRANSLATE_NOOP("SelfTest", "Start Vorq, and run it again.")});
    } else if (!m_stage->isInFront()) {
        result = skipped(windowLeft(), leaveAlone());
    } else {
        const QString text =
            co_await m_copyShortcut.captureFromCopyShortcutFast(process, std::move(stop));
        if (text != TestStage::sentence() && !m_stage->isInFront())
            result = skipped(windowLeft(), leaveAlone());
        else if (text != TestStage::sentence())
            result = failed(
                {QT_TRANSLATE_NOOP("SelfTest",
                                   "The test window's text was not read by the copy shortcut.")},
                {QT_TRANSLATE_NOOP("SelfTest",
                                   "A clipboard manager may have been faster; end it and run this "
                                   "again.")});
    }
    co_return result;
}

ReplacementCheck::ReplacementCheck(Clock& clock, Accessibility& accessibility, PasteOver& pasteOver,
                                   const LentClipboard& clipboard, std::shared_ptr<TestStage> stage)
    : m_clock(clock),
      m_accessibility(accessibility),
      m_pasteOver(pasteOver),
      m_clipboard(clipboard),
      m_stage(std::move(stage)),
      m_thread(clock) {}

// A replacement that does not land leaves its text on the clipboard, which is the user's.
QCoro::Task<SelfCheck> ReplacementCheck::run(std::stop_token stop) {
    SelfCheck result;
    if (!m_stage->process()) {
        result = skipped(withoutWindow());
        co_return result;
    }
    if (!m_accessibility.isTrusted()) {
        result = skipped({QT_TRANSLATE_NOOP("SelfTest", "Accessibility is off.")});
        co_return result;
    }
    const bool mayWrite = co_await mayLend(m_clock, m_clipboard);
    Pasteboard& pasteboard = m_clipboard.pasteboard;
    const TimeLimit limit(m_clock, clipboardLimit, stop);
    const Pasteboard::Contents former = co_await pasteboard.contents(limit.token());
    if (!mayWrite || (pasteboard.supported() && !former)) {
        result = skipped(clipboardInUse());
        co_return result;
    }
    result = co_await replace(std::move(stop));
    const Pasteboard::Change last = pasteboard.lastChange();
    if (former && last.writer == static_cast<ProcessId>(QCoreApplication::applicationPid())) {
        PasteboardContents kept = *former;
        (void)co_await pasteboard.write(std::move(kept), last.count);
    }
    co_return result;
}

QCoro::Task<SelfCheck> ReplacementCheck::replace(std::stop_token stop) {
    SelfCheck result = ok({QT_TRANSLATE_NOOP("SelfTest", "A word was replaced and put back.")});
    const QString sentence = TestStage::sentence();
    const TextRange range{.location = sentence.indexOf(testedWord), .length = testedWord.size()};
    const auto process = m_stage->process();
    if (!process) {
        result = skipped(withoutWindow());
        co_return result;
    }
    m_stage->window().highlight(range);
    const QString selected = co_await readUntil(
        m_clock, m_thread, selectionOf(m_accessibility, *process), testedWord, stop);
    if (selected != testedWord || !m_stage->isInFront()) {
        result = skipped(windowLeft(), leaveAlone());
        co_return result;
    }
    const PasteOver::Target target{
        .source = process, .window = m_stage->windowId(), .original = testedWord, .range = range};
    const auto replaced = co_await m_pasteOver.replaceSelectedText(otherWord, target, stop);
    const auto changed = co_await m_stage->window().text(stop);
    if (m_pasteOver.canUndo()) (void)co_await m_pasteOver.undo(stop);
    const auto restored = co_await m_stage->window().text(stop);
    QString expected = sentence;
    expected.replace(testedWord, otherWord);
    if (replaced == PasteOver::Outcome::Replaced && changed == expected && restored == sentence)
        co_return result;
    if (!m_stage->isInFront())
        result = skipped(windowLeft(), leaveAlone());
    else if (changed != expected)
        result = failed({QT_TRANSLATE_NOOP("SelfTest", "A word could not be replaced.")});
    else
        result = failed(
            {QT_TRANSLATE_NOOP("SelfTest", "A word was replaced, but could not be put back.")});
    co_return result;
}

} // namespace vorq
