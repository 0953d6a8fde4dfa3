#include "shell/status/StatusBounce.h"

#include <QEasingCurve>
#include <QPointF>

#include <algorithm>
#include <utility>

namespace vorq {
namespace {

constexpr double lowest = 0.28; // parts of a period
constexpr double backAtRest = 0.58;

QEasingCurve timing(QPointF first, QPointF second) {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment(first, second, {1, 1});
    return curve;
}

double secondsOf(Clock::Duration duration) {
    return std::chrono::duration<double>(duration).count();
}

} // namespace

StatusBounce::StatusBounce(Clock& clock, Tray tray) : m_clock(clock), m_tray(std::move(tray)) {}

StatusBounce::~StatusBounce() {
    cancelTimer();
}

double StatusBounce::dropAt(double progress) {
    static const QEasingCurve falling = timing({0.22, 0.72}, {0.28, 1});
    static const QEasingCurve rising = timing({0.32, 0}, {0.28, 1});
    if (progress < lowest) return falling.valueForProgress(progress / lowest);
    if (progress >= backAtRest) return 0;
    return 1 - rising.valueForProgress((progress - lowest) / (backAtRest - lowest));
}

void StatusBounce::start(AttentionForm form, int periods) {
    if (std::exchange(m_isRunning, true)) return;
    m_form = form;
    m_periods = periods;
    m_begin = m_clock.now();
    m_nextLook = m_begin;
    m_shown = {};
    step();
}

void StatusBounce::stop() {
    if (!std::exchange(m_isRunning, false)) return;
    cancelTimer();
    show({});
}

void StatusBounce::step() {
    const Clock::Duration passed = m_clock.now() - m_begin;
    const bool isOver = m_periods > 0 && passed >= m_periods * period;
    if (isOver || hasVanished()) return stop();
    const double progress = secondsOf(passed % period) / secondsOf(period);
    Clock::Duration next = lookTime;
    switch (m_form) {
    case AttentionForm::Bounce:
        show({.drop = dropAt(progress)});
        if (progress < backAtRest) next = frameTime;
        break;
    case AttentionForm::Blink:
        show({.image = progress < 0.5 ? StatusImage::Attention : StatusImage::Glyph});
        next = period / 2 - passed % (period / 2);
        break;
    case AttentionForm::Steady:
        show({.image = StatusImage::Attention});
        break;
    }
    // The next period begins in time, however the looks fall.
    next = std::min(next, period - passed % period);
    m_timer = m_clock.after(next, [this] {
        m_timer.reset();
        step();
    });
}

// The tray is not asked for each frame.
bool StatusBounce::hasVanished() {
    if (m_clock.now() < m_nextLook) return false;
    m_nextLook = m_clock.now() + lookTime;
    return !m_tray.hasItem();
}

void StatusBounce::show(const StatusFrame& frame) {
    if (frame == m_shown) return;
    m_shown = frame;
    m_tray.show(frame);
}

void StatusBounce::cancelTimer() {
    if (const auto timer = std::exchange(m_timer, std::nullopt)) m_clock.cancel(*timer);
}

} // namespace vorq
