#include "shell/permissions/WalkthroughWindow.h"

#include "platform/Compositor.h"
#include "platform/Defaults.h"
#include "platform/OverlayHints.h"
#include "shell/look/RoundedRows.h"

#include <QGuiApplication>
#include <QResizeEvent>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

constexpr int roomAround = 32;
constexpr int leastHeight = 240;
constexpr qsizetype mostAnswers = 8; // of the window manager that may be on their way
constexpr int rounding = 2;          // of places, where a point is not a pixel

QList<QRect> framesOfOtherWindows(const QWindow* own) {
    QList<QRect> frames;
    for (const QWindow* window : QGuiApplication::topLevelWindows())
        if (window != own && window->isVisible()) frames += window->frameGeometry();
    return frames;
}

} // namespace

WalkthroughWindow::WalkthroughWindow(const Platform& platform, QQmlEngine* engine)
    : QQuickView(engine, nullptr), m_platform(platform) {
    setObjectName(identifier);
    setTitle(tr("Accessibility Access"));
    setResizeMode(SizeViewToRootObject);
    // The panel is above all others, too, and would cover it.
    setFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    // The kind of a window is settled when it is made, and a compositor may come later.
    QSurfaceFormat withAlpha = format();
    withAlpha.setAlphaBufferSize(8);
    setFormat(withAlpha);
    setColor(Qt::transparent);
    connect(&m_platform.compositor, &Compositor::changed, this, &WalkthroughWindow::applyShape);
    connect(
        this, &QWindow::screenChanged, this,
        [this] {
            applyShape();
            emit tallestChanged();
        },
        Qt::QueuedConnection);
}

WalkthroughWindow::~WalkthroughWindow() {
    keepPlace();
}

int WalkthroughWindow::tallest() const {
    const QScreen* on = screen();
    const int room = on == nullptr ? 0 : on->availableGeometry().height();
    return std::max(leastHeight, room - 2 * roomAround);
}

void WalkthroughWindow::present(Keyboard keyboard) {
    const bool takesKeyboard = keyboard == Keyboard::Takes;
    setProperty("_q_showWithoutActivating", !takesKeyboard);
    if (!isVisible()) restorePlace(keyboard);
    show();
    raise();
    if (!takesKeyboard) return;
    m_platform.hints.takeFocus(winId());
    requestActivate();
}

void WalkthroughWindow::restorePlace(Keyboard keyboard) {
    QList<QRect> screens;
    for (const QScreen* each : QGuiApplication::screens())
        screens += each->availableGeometry();
    if (screens.isEmpty()) return;
    const auto stored = decodePlace(m_platform.defaults.string(placeKey).value_or(QString()));
    QRect frame = centredFrame(size(), screens.front());
    if (stored) {
        m_place = stored->frame;
        frame.moveCenter(stored->frame.center());
        frame = reachableFrame(frame, screens);
    }
    if (keyboard == Keyboard::Leaves)
        frame = clearOf(frame, screens.front(), framesOfOtherWindows(this));
    m_middle = frame.center();
    place(frame);
}

void WalkthroughWindow::place(const QRect& frame) {
    m_asked += frame.topLeft();
    if (m_asked.size() > mostAnswers) m_asked.removeFirst();
    setPosition(frame.topLeft());
}

void WalkthroughWindow::keepPlace() {
    if (m_place) m_platform.defaults.keepString(placeKey, encodePlace({*m_place}));
}

void WalkthroughWindow::applyShape() {
    if (handle() == nullptr) return;
    const double scale = devicePixelRatio();
    const QSize pixels(static_cast<int>(std::lround(width() * scale)),
                       static_cast<int>(std::lround(height() * scale)));
    const bool isOpaque = m_platform.compositor.translucency() == Translucency::None;
    m_platform.hints.setShape(winId(), isOpaque ? roundedRows(pixels, cornerRadius * scale)
                                                : std::vector<QRect>());
}

// The page goes on being as it is; whoever shows the window hides it.
bool WalkthroughWindow::event(QEvent* event) {
    if (event->type() == QEvent::Close) {
        event->ignore();
        emit closeAsked();
        return true;
    }
    if (event->type() == QEvent::FocusIn) emit activated();
    return QQuickView::event(event);
}

void WalkthroughWindow::resizeEvent(QResizeEvent* event) {
    QQuickView::resizeEvent(event);
    if (isVisible()) keepMiddle();
    applyShape();
}

// It grows around its middle, but not out of the screen.
void WalkthroughWindow::keepMiddle() {
    if (screen() == nullptr) return;
    QRect frame(QPoint(), size());
    frame.moveCenter(m_middle);
    place(reachableFrame(frame, {screen()->availableGeometry()}));
}

// The window manager tells of each place that was asked for, some of them when the next one has
// been asked for already. What is none of these is the user's; where it came up by itself is no
// choice of theirs.
void WalkthroughWindow::moveEvent(QMoveEvent* event) {
    QQuickView::moveEvent(event);
    const bool isAnswer = std::ranges::any_of(m_asked, [&](const QPoint& asked) {
        return (event->pos() - asked).manhattanLength() <= rounding;
    });
    if (!isVisible() || isAnswer) return;
    m_asked.clear();
    const QRect frame(event->pos(), size());
    m_middle = frame.center();
    if (isActive()) m_place = frame;
}

} // namespace vorq
