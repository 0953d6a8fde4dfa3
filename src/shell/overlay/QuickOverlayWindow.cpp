#include "shell/overlay/QuickOverlayWindow.h"

#include "platform/OverlayHints.h"
#include "platform/Screens.h"
#include "shell/notices/ShellLog.h"
#include "shell/overlay/CalloutRows.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickItem>
#include <QScopedValueRollback>

#include <cmath>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

int pixels(double points, double scale) {
    return static_cast<int>(std::lround(points * scale));
}

} // namespace

QuickOverlayWindow::QuickOverlayWindow(const Platform& platform, QQmlEngine* engine, int margin)
    : QQuickView(engine, nullptr), m_platform(platform), m_margin(margin) {
    setTitle(tr("Rewrite"));
    setResizeMode(SizeRootObjectToView);
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
             Qt::WindowDoesNotAcceptFocus);
    // Also where nothing is translucent yet: a compositor may come later, and the kind of a window
    // is settled when it is made.
    QSurfaceFormat withAlpha = format();
    withAlpha.setAlphaBufferSize(8);
    setFormat(withAlpha);
    setColor(Qt::transparent);
    setProperty("_q_showWithoutActivating", true);
    // On a screen of another scale the same size is another number of pixels. Both are right only
    // after the change.
    connect(this, &QWindow::screenChanged, this, &QuickOverlayWindow::applyForm,
            Qt::QueuedConnection);
    connect(&m_platform.compositor, &Compositor::changed, this, &QuickOverlayWindow::applyForm);
}

// The view goes before what it reads.
QuickOverlayWindow::~QuickOverlayWindow() {
    setSource({});
}

void QuickOverlayWindow::prepare(const QUrl& view) {
    setSource(view);
    for (const QQmlError& error : errors())
        qCCritical(shellLog, "Vorq: the writing tools do not load: %s",
                   qUtf8Printable(error.toString()));
    if (const QQuickItem* root = rootObject()) {
        connect(root, &QQuickItem::implicitWidthChanged, this, &QuickOverlayWindow::tellSize);
        connect(root, &QQuickItem::implicitHeightChanged, this, &QuickOverlayWindow::tellSize);
    }
    create();
}

// Whoever asks knows then.
QSizeF QuickOverlayWindow::wantedSize() {
    QQuickItem* root = rootObject();
    if (root == nullptr) return {};
    const QScopedValueRollback isMeasuring(m_isMeasuring, true);
    QMetaObject::invokeMethod(root, "layOut");
    return {root->implicitWidth(), root->implicitHeight()};
}

void QuickOverlayWindow::tellSize() {
    if (m_input != nullptr && !m_isMeasuring) m_input->sizeChanged();
}

void QuickOverlayWindow::place(const QRectF& frame, bool pointsUp, double tipX) {
    m_pointsUp = pointsUp;
    m_tipX = tipX;
    const QRectF room = m_platform.screens.flipped(frame);
    setGeometry(room.adjusted(-m_margin, -m_margin, m_margin, m_margin).toRect());
    applyForm();
}

void QuickOverlayWindow::show() {
    if (!isVisible()) {
        create();
        m_platform.hints.prepare(id());
        QQuickView::show();
    }
    raise();
}

// Before the window is on the screen Qt would only keep it in mind, and pull a user back who has
// gone elsewhere by then.
void QuickOverlayWindow::takeKeyboard() {
    setFlag(Qt::WindowDoesNotAcceptFocus, false);
    m_platform.hints.takeFocus(id());
    if (isExposed() || QGuiApplication::platformName() != "xcb"_L1) requestActivate();
}

bool QuickOverlayWindow::event(QEvent* event) {
    if (m_input == nullptr) return QQuickView::event(event);
    switch (event->type()) {
    case QEvent::Close:
        // The view's own way would destroy the window.
        event->accept();
        m_input->closed();
        return true;
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) break;
        m_input->escapePressed();
        return true;
    default:
        break;
    }
    return QQuickView::event(event);
}

void QuickOverlayWindow::resizeEvent(QResizeEvent* event) {
    QQuickView::resizeEvent(event);
    applyForm();
}

void QuickOverlayWindow::applyForm() {
    if (handle() == nullptr) return;
    const double scale = devicePixelRatio();
    const double top = m_margin + (m_pointsUp ? arrow.height() : 0);
    const double high = height() - 2.0 * m_margin - arrow.height();
    const CalloutForm form{
        .card = QRect(pixels(m_margin, scale), pixels(top, scale),
                      pixels(width() - 2.0 * m_margin, scale), pixels(high, scale)),
        .radius = cornerRadius * scale,
        .arrow = QSize(pixels(arrow.width(), scale), pixels(arrow.height(), scale)),
        .pointsUp = m_pointsUp,
        .tipX = (m_margin + m_tipX) * scale};
    const std::vector<QRect> rows = calloutRows(form);
    const Translucency translucency = m_platform.compositor.translucency();
    m_platform.hints.setInputShape(id(), rows);
    m_platform.hints.setShape(id(),
                              translucency == Translucency::None ? rows : std::vector<QRect>());
    m_platform.hints.setBlurBehind(
        id(), translucency == Translucency::Blurred ? rows : std::vector<QRect>());
}

} // namespace vorq
