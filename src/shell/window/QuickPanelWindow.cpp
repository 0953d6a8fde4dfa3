#include "shell/window/QuickPanelWindow.h"

#include "platform/OverlayHints.h"
#include "platform/Screens.h"
#include "shell/look/RoundedRows.h"
#include "shell/panel/PanelSelectionBridge.h"
#include "support/StableSort.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <QResizeEvent>

#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int motionMilliseconds = 280;
constexpr double millisecondsPerSecond = 1000;

bool hasGlyphsAt(const QQuickItem& toolkitText, QPointF globalPoint) {
    const QRectF glyphs(0, 0, toolkitText.property("contentWidth").toDouble(),
                        toolkitText.property("contentHeight").toDouble());
    return glyphs.contains(toolkitText.mapFromGlobal(globalPoint));
}

// Answers nothing for what is no text.
std::optional<PanelPressTarget> textTarget(const QQuickItem& item, QPointF globalPoint) {
    const bool isToolkits = item.inherits("QQuickTextEdit") || item.inherits("QQuickTextInput");
    if (isToolkits && !item.property("readOnly").toBool()) return PanelPressTarget::EditableText;
    const auto* text = dynamic_cast<const SelectableText*>(&item);
    if (!isToolkits && text == nullptr) return std::nullopt;
    const bool isOnGlyphs =
        text != nullptr ? text->hasGlyphsAt(globalPoint) : hasGlyphsAt(item, globalPoint);
    return isOnGlyphs ? PanelPressTarget::Glyphs : PanelPressTarget::SelectableText;
}

// The children as the mouse meets them: what is painted last comes first.
std::vector<QQuickItem*> fromTheTop(const QQuickItem& item) {
    const QList<QQuickItem*> painted = item.childItems();
    std::vector<QQuickItem*> children(painted.rbegin(), painted.rend());
    stableSort(children, [](const QQuickItem* a, const QQuickItem* b) { return a->z() > b->z(); });
    return children;
}

// What a press at a point of the item meets first; nothing where it would fall through. What takes
// no button, such as a place to drop files on, is not in the way of what lies below.
std::optional<PanelPressTarget> pressedAt(QQuickItem& item, QPointF point, QPointF globalPoint) {
    const bool isInside = item.contains(point);
    if (!item.isVisible() || (item.clip() && !isInside)) return std::nullopt;
    for (QQuickItem* child : fromTheTop(item))
        if (const auto met = pressedAt(*child, child->mapFromItem(&item, point), globalPoint))
            return met;
    if (!isInside) return std::nullopt;
    if (const auto text = textTarget(item, globalPoint)) return text;
    // The property, since an area for the mouse keeps this to itself.
    const bool isEnabled = item.property("enabled").toBool();
    if (isEnabled && item.acceptedMouseButtons().testFlag(Qt::LeftButton))
        return PanelPressTarget::Plain;
    return std::nullopt;
}

} // namespace

QuickPanelWindow::QuickPanelWindow(const Platform& platform, QQmlEngine* engine)
    : QQuickView(engine, nullptr), m_platform(platform) {
    setTitle(u"Vorq"_s);
    setResizeMode(SizeRootObjectToView);
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    // Also where nothing is translucent yet: a compositor may come later, and the kind of a window
    // is settled when it is made.
    QSurfaceFormat withAlpha = format();
    withAlpha.setAlphaBufferSize(8);
    setFormat(withAlpha);
    setColor(Qt::transparent);
    // The window manager must not give it the keyboard unasked: it is asked for when it is shown.
    setProperty("_q_showWithoutActivating", true);
    m_motion.setDuration(motionMilliseconds);
    m_motion.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_motion, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        setGeometry(m_platform.screens.flipped(value.toRectF()).toRect());
    });
    // On a screen of another scale the same size is another number of pixels. Both are right only
    // after the change.
    connect(this, &QWindow::screenChanged, this, &QuickPanelWindow::applyTranslucency,
            Qt::QueuedConnection);
    connect(&m_platform.compositor, &Compositor::changed, this,
            &QuickPanelWindow::applyTranslucency);
}

QuickPanelWindow::~QuickPanelWindow() {
    setInput(nullptr);
    setDockDragging(false);
}

void QuickPanelWindow::prepare() {
    create();
    applyTranslucency();
    if (rootObject() == nullptr) return;
    // A first frame has the driver loaded and its programs compiled. Without a graphics processor
    // it takes 5 ms more than another, and its pictures would be held until somebody looks.
    const bool isDrawnByProcessor =
        rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
    if (!isDrawnByProcessor && !size().isEmpty()) grabWindow();
}

void QuickPanelWindow::applyTranslucency() {
    if (handle() == nullptr) return;
    const double scale = devicePixelRatio();
    const QSize pixels(static_cast<int>(std::lround(width() * scale)),
                       static_cast<int>(std::lround(height() * scale)));
    const std::vector<QRect> rounded = roundedRows(pixels, cornerRadius * scale);
    const Translucency translucency = m_platform.compositor.translucency();
    const bool isOpaque = translucency == Translucency::None;
    const bool isBlurred = translucency == Translucency::Blurred;
    m_platform.hints.setShape(id(), isOpaque ? rounded : std::vector<QRect>());
    m_platform.hints.setBlurBehind(id(), isBlurred ? rounded : std::vector<QRect>());
}

void QuickPanelWindow::setFrame(const QRectF& frame, bool isAnimated) {
    m_motion.stop();
    m_frame = frame;
    const QRect target = m_platform.screens.flipped(frame).toRect();
    if (!isAnimated || m_isMotionReduced || !isVisible()) {
        setGeometry(target);
        return;
    }
    if (geometry() == target) return;
    m_motion.setStartValue(m_platform.screens.flipped(QRectF(geometry())));
    m_motion.setEndValue(frame);
    m_motion.start();
}

void QuickPanelWindow::orderFront() {
    if (!isVisible()) {
        create();
        m_platform.hints.prepare(id());
        show();
    }
    raise();
}

void QuickPanelWindow::activate() {
    m_platform.hints.takeFocus(id());
    // Before the window is on the screen Qt would only keep it in mind, and pull a user back who
    // has gone elsewhere by then.
    if (isExposed() || QGuiApplication::platformName() != "xcb"_L1) requestActivate();
}

void QuickPanelWindow::orderOut() {
    m_motion.stop();
    hide();
}

// Qt goes by the events that it was sent, and those of a busy moment may mislead it.
bool QuickPanelWindow::isOnScreen() const {
    const bool isX11 = QGuiApplication::platformName() == "xcb"_L1;
    return isX11 ? m_platform.screens.windowFrame(id()).has_value() : isExposed();
}

bool QuickPanelWindow::isAnotherActive() const {
    const QWindow* active = QGuiApplication::focusWindow();
    return active != nullptr && active != this;
}

void QuickPanelWindow::setDockDragging(bool isOn) {
    if (isOn == m_isDockDragging) return;
    m_isDockDragging = isOn;
    if (isOn)
        QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

void QuickPanelWindow::setInput(PanelWindowInput* input) {
    if (input == m_input) return;
    if (m_input == nullptr) qGuiApp->installEventFilter(this);
    if (input == nullptr) qGuiApp->removeEventFilter(this);
    m_input = input;
}

bool QuickPanelWindow::event(QEvent* event) {
    if (m_input == nullptr) return QQuickView::event(event);
    switch (event->type()) {
    case QEvent::Close:
        // The view's own way would destroy the window, with all that prepare() has done.
        event->accept();
        m_input->closed();
        return true;
    case QEvent::WindowStateChange:
        m_input->exposureChanged();
        break;
    case QEvent::ShortcutOverride:
        // No shortcut of the view comes before the rule for Escape.
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            event->accept();
            return true;
        }
        break;
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && m_input->escapePressed())
            return true;
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        if (takeMouse(*static_cast<QMouseEvent*>(event))) return true;
        break;
    default:
        break;
    }
    return QQuickView::event(event);
}

bool QuickPanelWindow::eventFilter(QObject* watched, QEvent* event) {
    const bool isMouse =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease;
    if (isMouse && m_input != nullptr && watched->isWindowType() && watched != this)
        m_input->mouseElsewhere();
    return QQuickView::eventFilter(watched, event);
}

void QuickPanelWindow::resizeEvent(QResizeEvent* event) {
    QQuickView::resizeEvent(event);
    followFrame();
    applyTranslucency();
}

void QuickPanelWindow::moveEvent(QMoveEvent* event) {
    QQuickView::moveEvent(event);
    followFrame();
}

// A window manager may have other plans for the window, or its user may drag it elsewhere.
void QuickPanelWindow::followFrame() {
    if (!isVisible() || m_motion.state() == QAbstractAnimation::Running) return;
    if (geometry() != m_platform.screens.flipped(m_frame).toRect())
        m_frame = m_platform.screens.flipped(QRectF(geometry()));
}

void QuickPanelWindow::exposeEvent(QExposeEvent* event) {
    QQuickView::exposeEvent(event);
    if (m_input != nullptr) m_input->exposureChanged();
}

bool QuickPanelWindow::takeMouse(QMouseEvent& event) {
    using Kind = PanelMouse::Kind;
    const bool isMove = event.type() == QEvent::MouseMove;
    const bool isLeft =
        isMove ? event.buttons().testFlag(Qt::LeftButton) : event.button() == Qt::LeftButton;
    if (!isLeft) return false;
    const bool isPress = event.type() == QEvent::MouseButtonPress;
    const Kind released = isPress ? Kind::Down : Kind::Up;
    const bool wasDragging = m_isDockDragging;
    const bool isSwallowed =
        m_input->mouse({.kind = isMove ? Kind::Dragged : released,
                        .at = m_platform.screens.flipped(event.globalPosition()),
                        .yInWindow = height() - event.position().y(),
                        .target = isPress ? pressTarget(event.position()) : PanelPressTarget::Plain,
                        .seconds = static_cast<double>(event.timestamp()) / millisecondsPerSecond});
    if (m_isDockDragging && !wasDragging) releaseGrabs(event);
    return isSwallowed;
}

// What was pressed when the drag began never sees the button go up.
void QuickPanelWindow::releaseGrabs(QMouseEvent& event) {
    for (const QEventPoint& point : event.points()) {
        event.setExclusiveGrabber(point, nullptr);
        event.clearPassiveGrabbers(point);
    }
}

PanelPressTarget QuickPanelWindow::pressTarget(QPointF inWindow) const {
    const QPointF globalPoint = contentItem()->mapToGlobal(inWindow);
    return pressedAt(*contentItem(), inWindow, globalPoint).value_or(PanelPressTarget::Plain);
}

} // namespace vorq
