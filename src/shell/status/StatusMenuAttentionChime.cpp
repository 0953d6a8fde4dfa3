#include "shell/status/StatusMenuAttentionChime.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace vorq {
namespace {

struct Key {
    double time;
    double value;
};

constexpr std::array<Key, 8> alphas{{{0, 0},
                                     {0.12, 0.55},
                                     {0.24, 0.22},
                                     {0.38, 0.55},
                                     {0.52, 0.22},
                                     {0.66, 0.38},
                                     {0.82, 0.22},
                                     {1, 0}}};
constexpr std::array<Key, 7> scales{
    {{0, 1}, {0.14, 1.04}, {0.3, 1}, {0.48, 1.03}, {0.64, 1}, {0.82, 1.015}, {1, 1}}};
constexpr double steadyAlpha = 0.38;
constexpr int rowRadius = 4;

// Eased in and out between two keys.
double valueAt(std::span<const Key> keys, double progress) {
    const double time = std::clamp(progress, 0.0, 1.0);
    const auto next = std::ranges::find_if(keys, [&](const Key& key) { return key.time >= time; });
    if (next == keys.begin()) return next->value;
    const Key& last = *std::prev(next);
    const double part = (time - last.time) / (next->time - last.time);
    return last.value + (next->value - last.value) * part * part * (3 - 2 * part);
}

QColor orange(double alpha) {
    return QColor::fromRgbF(0.976F, 0.451F, 0.086F, static_cast<float>(alpha));
}

void scaleWithin(QPainter& painter, const QRectF& place, double scale) {
    painter.translate(place.center());
    painter.scale(scale, scale);
    painter.translate(-place.center());
}

} // namespace

StatusMenuAttentionChime::StatusMenuAttentionChime(Clock& clock, QMenu& menu)
    : QProxyStyle(QStyleFactory::create(QApplication::style()->name())),
      m_clock(clock),
      m_menu(menu) {
    m_menu.setStyle(this);
}

StatusMenuAttentionChime::~StatusMenuAttentionChime() {
    cancelTimer();
    m_menu.setStyle(nullptr);
}

StatusMenuAttentionChime::Look StatusMenuAttentionChime::lookAt(double progress) {
    return {.alpha = valueAt(alphas, progress), .scale = valueAt(scales, progress)};
}

void StatusMenuAttentionChime::play(QAction* on, bool reducesMotion) {
    cancelTimer();
    m_entry = on;
    m_reducesMotion = reducesMotion;
    m_begin = m_clock.now();
    step();
}

std::optional<StatusMenuAttentionChime::Look> StatusMenuAttentionChime::look() const {
    return m_entry ? std::optional(m_look) : std::nullopt;
}

void StatusMenuAttentionChime::step() {
    if (!m_entry) return;
    m_menu.update(m_menu.actionGeometry(m_entry));
    const Clock::Duration passed = m_clock.now() - m_begin;
    if (passed >= duration) {
        m_entry = nullptr;
        return;
    }
    m_look = m_reducesMotion ? Look{.alpha = steadyAlpha}
                             : lookAt(std::chrono::duration<double>(passed) / duration);
    m_timer = m_clock.after(m_reducesMotion ? duration : frameTime, [this] {
        m_timer.reset();
        step();
    });
}

void StatusMenuAttentionChime::cancelTimer() {
    if (const auto timer = std::exchange(m_timer, std::nullopt)) m_clock.cancel(*timer);
}

// Under what is selected the orange would not be seen.
void StatusMenuAttentionChime::drawControl(ControlElement element, const QStyleOption* option,
                                           QPainter* painter, const QWidget* widget) const {
    const bool isPlayed = element == CE_MenuItem && m_entry && widget == &m_menu &&
                          option->rect == m_menu.actionGeometry(m_entry) &&
                          !option->state.testFlag(State_Selected);
    if (!isPlayed) return QProxyStyle::drawControl(element, option, painter, widget);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(orange(m_look.alpha));
    painter->drawRoundedRect(option->rect, rowRadius, rowRadius);
    scaleWithin(*painter, option->rect, m_look.scale);
    QProxyStyle::drawControl(element, option, painter, widget);
    painter->restore();
}

} // namespace vorq
