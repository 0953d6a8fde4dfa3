#include "capture/placement/SnapshotCapture.h"

#include "capture/placement/HighlightSearch.h"
#include "capture/selection/CaptureLog.h"
#include "capture/selection/CapturedText.h"
#include "capture/selection/CopyShortcut.h"
#include "capture/source/CaptureGate.h"
#include "platform/Screens.h"
#include "support/text/Text.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

SelectionSnapshot snapshotAtMouse(std::optional<ProcessId> source, QPointF mouse) {
    return {.text = {},
            .exactText = {},
            .screenFrame = mouseAnchor(mouse),
            .clickPoint = mouse,
            .sourcePID = source,
            .selectedRange = {}};
}

void askForCapture(const CaptureSource& from, SelectionReading& reading) {
    reading.isPassword = isPasswordFocused(from);
    if (!reading.isPassword) reading.capture = captureFromFocusedAccessibilityElement(from);
}

void askForCaptureOrNone(const CaptureSource& from, SelectionReading& reading) {
    askForCapture(from, reading);
    if (reading.isPassword || reading.capture) return;
    reading.isNothingSelected = tellsThatNothingIsSelected(from);
}

QString truth(bool is) {
    return is ? u"true"_s : u"false"_s;
}

} // namespace

QCoro::Task<SelectionSnapshot> SnapshotCapture::captureSelection(std::optional<ProcessId> source,
                                                                 std::optional<QPointF> mousePoint,
                                                                 bool useScreenGeometry,
                                                                 std::stop_token stop) {
    const QPointer<SnapshotCapture> self(this);
    const QPointF mouse = mousePoint ? *mousePoint : m_services.screens.pointer();
    const SelectionSnapshot anchored = snapshotAtMouse(source, mouse);
    if (!m_services.gate.isTrusted()) {
        m_services.log.placeDbg(u"capture: not trusted"_s);
        co_return anchored;
    }
    source = m_services.gate.settled(source);
    if (!m_services.gate.admits(source)) co_return anchored;
    const CaptureBudget budget = m_services.reader.beginBudget();
    const auto directly = [source, screens = screenLayout(m_services.screens)](
                              const SelectionReading& reading) {
        return reading.capture ? snapshotFromAX(*reading.capture, source, screens) : std::nullopt;
    };
    SelectionReader::IsEnough isEnough = [directly](const SelectionReading& reading) {
        return directly(reading).has_value();
    };
    const SelectionReading reading = co_await m_services.reader.read(
        source, budget, askForCaptureOrNone, std::move(isEnough), stop);
    if (!self || stop.stop_requested() || reading.isPassword) co_return anchored;
    if (const auto direct = directly(reading)) {
        m_services.log.placeDbg(u"capture: AX-direct frame=%1 mouse=%2"_s.arg(
            logged(direct->screenFrame), logged(mouse)));
        co_return *direct;
    }
    const Aim aim{.source = source, .mouse = mouse, .useScreenGeometry = useScreenGeometry};
    const SelectionSnapshot snapshot = co_await captureByCopy(aim, reading.highlightedText(), stop);
    co_return snapshot;
}

QCoro::Task<SelectionSnapshot> SnapshotCapture::captureByCopy(Aim aim, QString highlighted,
                                                              std::stop_token stop) {
    const QPointer<SnapshotCapture> self(this);
    SelectionSnapshot snapshot = snapshotAtMouse(aim.source, aim.mouse);
    QString copied = highlighted;
    if (copied.isEmpty()) {
        copied = co_await m_services.copyShortcut.captureFromCopyShortcutFast(aim.source, stop);
        if (!self || stop.stop_requested()) co_return snapshot;
    }
    const SelectionReading reading = co_await m_services.reader.readAccessibility(
        aim.source, askForCapture, CaptureBudget::accessibilityLimit, stop);
    if (!self || stop.stop_requested() || reading.isPassword) co_return snapshot;
    auto afterCopy = snapshotAfterCopy(reading, copied, aim);
    const bool isTold = afterCopy && afterCopy->text == trimmed(afterCopy->exactText);
    snapshot.isHeldBack =
        (isTold ? CapturedText::told(copied) : CapturedText::found(copied)).isHeldBack;
    if (afterCopy) {
        afterCopy->isHeldBack = snapshot.isHeldBack;
        co_return *afterCopy;
    }
    snapshot.text = copied;
    snapshot.exactText = copied;
    const SelectionSnapshot placed = co_await placeBySight(aim, snapshot, stop);
    co_return placed;
}

QCoro::Task<SelectionSnapshot> SnapshotCapture::placeBySight(Aim aim, SelectionSnapshot snapshot,
                                                             std::stop_token stop) {
    const QPointer<SnapshotCapture> self(this);
    if (aim.useScreenGeometry && !snapshot.text.isEmpty()) {
        const auto seen = co_await m_services.search.highlightPlacementFromScreenshot(
            aim.source, aim.mouse, stop);
        if (!self || stop.stop_requested()) co_return snapshot;
        if (seen) {
            m_services.log.placeDbg(u"capture: screenshot frame=%1 mouse=%2"_s.arg(
                logged(seen->screenFrame), logged(aim.mouse)));
            snapshot.screenFrame = seen->screenFrame;
            snapshot.clickPoint = seen->clickPoint;
            snapshot.hasReliablePlacement = true;
            co_return snapshot;
        }
    }
    m_services.log.placeDbg(
        u"capture: FALLBACK to mouse anchor %1 copiedEmpty=%2 screenGeometry=%3"_s.arg(
            logged(snapshot.screenFrame), truth(snapshot.text.isEmpty()),
            truth(aim.useScreenGeometry)));
    co_return snapshot;
}

std::optional<SelectionSnapshot> SnapshotCapture::snapshotAfterCopy(const SelectionReading& reading,
                                                                    const QString& copied,
                                                                    const Aim& aim) const {
    if (!reading.capture) return std::nullopt;
    const ScreenLayout screens = screenLayout(m_services.screens);
    const auto frame = placementFrame(*reading.capture, screens);
    if (!frame) return std::nullopt;
    const QString& exact = reading.capture->text;
    const auto& raw = reading.capture->rawAXFrame;
    m_services.log.placeDbg(u"capture: AX-after-copy frame=%1 rawAX=%2 mouse=%3"_s.arg(
        logged(*frame), raw ? logged(*raw) : u"nil"_s, logged(aim.mouse)));
    return SelectionSnapshot{.text = copied.isEmpty() ? trimmed(exact).toString() : copied,
                             .exactText = exact.isEmpty() ? copied : exact,
                             .screenFrame = *frame,
                             .clickPoint = placementPoint(*reading.capture, *frame, screens),
                             .sourcePID = aim.source,
                             .selectedRange = reading.capture->selectedRange,
                             .hasReliablePlacement = true,
                             .isHeldBack = false};
}

} // namespace vorq
