#include "ui/gallery/GalleryView.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QQuickItem>

#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int stateDelay = 60;      // until the page stands, in milliseconds
constexpr int animationDelay = 400; // longer than anything moves
constexpr int ringRoom = 8;

void collectItems(QQuickItem& from, const std::function<bool(const QQuickItem&)>& matches,
                  QList<QQuickItem*>& found) {
    if (matches(from)) found += &from;
    for (QQuickItem* child : from.childItems())
        collectItems(*child, matches, found);
}

bool isControl(const QQuickItem& item) {
    return item.isVisible() &&
           (item.inherits("QQuickAbstractButton") || item.inherits("QQuickTextInput"));
}

// "want:hover:1" wants it of the second control below.
QQuickItem* wantedControl(QQuickItem& item) {
    QList<QQuickItem*> controls;
    collectItems(item, isControl, controls);
    return controls.value(item.objectName().section(u':', 2, 2).toInt());
}

void hoverOver(QQuickItem& item) {
    const QPointF middle(item.width() / 2, item.height() / 2);
    QHoverEvent event(QEvent::HoverEnter, middle, item.mapToGlobal(middle), {-1, -1});
    QCoreApplication::sendEvent(&item, &event);
}

void turnAround() {
    const bool isMirrored = QGuiApplication::layoutDirection() == Qt::RightToLeft;
    QGuiApplication::setLayoutDirection(isMirrored ? Qt::LeftToRight : Qt::RightToLeft);
}

} // namespace

GalleryView::GalleryView(PanelStage& stage)
    : QQuickView(stage.engine.get(), nullptr), m_stage(stage) {
    QStringList icons = QDir(u":/qt/qml/Vorq/Native/icons"_s).entryList();
    icons.replaceInStrings(u".svg"_s, QString());
    setTitle(u"Vorq gallery"_s);
    setResizeMode(SizeRootObjectToView);
    setInitialProperties({{u"iconNames"_s, icons}});
    setSource(QUrl(u"qrc:/qt/qml/Vorq/Gallery/Gallery.qml"_s));
    if (rootObject() == nullptr) qFatal("the gallery does not load");
    setDark(true);
}

int GalleryView::pageCount() const {
    return static_cast<int>(rootObject()->property("pages").toStringList().size());
}

QString GalleryView::pageName() const {
    return rootObject()->property("name").toString();
}

void GalleryView::setPage(int page) {
    rootObject()->setProperty("page", page);
    bringIntoStates();
}

void GalleryView::setDark(bool isDark) {
    m_isDark = isDark;
    m_stage.state->appearance().setPanelAppearance(isDark ? PanelAppearance::Current
                                                          : PanelAppearance::White);
}

QList<QQuickItem*> GalleryView::wanting(const QString& state) const {
    QList<QQuickItem*> found;
    collectItems(
        *rootObject(),
        [&](const QQuickItem& item) {
            return item.objectName().section(u':', 0, 1) == u"want:"_s + state;
        },
        found);
    for (QQuickItem*& item : found)
        item = wantedControl(*item);
    found.removeAll(nullptr);
    return found;
}

void GalleryView::bringIntoStates() {
    m_stage.settle(stateDelay);
    for (QQuickItem* item : wanting(u"hover"_s) + wanting(u"pressed"_s))
        hoverOver(*item);
    for (QQuickItem* item : wanting(u"pressed"_s))
        item->setProperty("down", true);
}

// Only one control at a time has the keyboard, so the picture is put together.
QImage GalleryView::picture() {
    m_stage.settle(animationDelay);
    QImage whole = grabWindow();
    QPainter painter(&whole);
    for (QQuickItem* item : wanting(u"focus"_s)) {
        item->forceActiveFocus(Qt::TabFocusReason);
        m_stage.settle(stateDelay);
        const QRect place = item->mapRectToScene(QRectF(QPointF(), item->size()))
                                .toAlignedRect()
                                .adjusted(-ringRoom, -ringRoom, ringRoom, ringRoom);
        painter.drawImage(place.topLeft(), grabWindow(), place);
        rootObject()->forceActiveFocus();
    }
    return whole;
}

void GalleryView::step(int by) {
    QMetaObject::invokeMethod(rootObject(), "step", Q_ARG(int, by));
    bringIntoStates();
}

void GalleryView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_PageDown:
        step(1);
        return;
    case Qt::Key_PageUp:
        step(-1);
        return;
    case Qt::Key_F2:
        setDark(!m_isDark);
        return;
    case Qt::Key_F3:
        turnAround();
        return;
    case Qt::Key_F4: {
        const double scale = m_stage.look->textScale();
        m_stage.look->setTextScale(scale >= 2 ? 1 : scale + 0.5);
        return;
    }
    case Qt::Key_F5:
        m_hasContrast = !m_hasContrast;
        break;
    case Qt::Key_F6:
        m_hasMotion = !m_hasMotion;
        break;
    default:
        QQuickView::keyPressEvent(event);
        return;
    }
    m_stage.look->setDesktop({.allowsAnimations = m_hasMotion, .wantsHighContrast = m_hasContrast});
}

} // namespace vorq
