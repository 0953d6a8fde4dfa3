#include "doubles/ui/PartTest.h"

#include "doubles/ui/PartPage.h"

#include <QKeyEvent>
#include <QQmlComponent>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Menus and sheets lie beside the page, so this looks through the whole window.
QQuickItem* firstItem(QQuickItem& from, const std::function<bool(const QQuickItem&)>& matches) {
    if (matches(from)) return &from;
    for (QQuickItem* child : from.childItems())
        if (QQuickItem* found = firstItem(*child, matches)) return found;
    return nullptr;
}

bool isOfType(const QQuickItem& item, const QString& type) {
    const QString name = QString::fromLatin1(item.metaObject()->className());
    return name == type || name.startsWith(type + u"_QML"_s);
}

} // namespace

PartTest::PartTest() {
    QAccessible::setActive(true);
}

PartTest::~PartTest() {
    m_root.reset();
    QAccessible::setActive(false);
}

void PartTest::show(const QString& body) {
    QQmlComponent component(stage.engine.get());
    component.setData(partPage(body), QUrl(u"qrc:/test/Part.qml"_s));
    m_root.reset(qobject_cast<QQuickItem*>(component.create()));
    if (!m_root) qFatal("%s", qPrintable(component.errorString()));
    window.resize(partWindow);
    m_root->setParentItem(window.contentItem());
    window.show();
    window.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    stage.settle(30);
}

QQuickItem& PartTest::part(const QString& name) {
    QQuickItem* found = firstItem(
        *window.contentItem(), [&](const QQuickItem& item) { return item.objectName() == name; });
    if (found == nullptr) qFatal("there is no part %s", qPrintable(name));
    return *found;
}

QQuickItem* PartTest::within(QQuickItem& item, const QString& type) {
    return firstItem(item, [&](const QQuickItem& each) { return isOfType(each, type); });
}

QQuickItem* PartTest::saying(const QString& words) {
    return firstItem(*window.contentItem(), [&](const QQuickItem& item) {
        return item.isVisible() && item.property("text").toString() == words;
    });
}

QPoint PartTest::middle(const QQuickItem& item) {
    return item.mapToScene({item.width() / 2, item.height() / 2}).toPoint();
}

void PartTest::click(const QQuickItem& item) {
    QTest::mouseClick(&window, Qt::LeftButton, {}, middle(item));
    stage.settle(20);
}

void PartTest::hover(const QQuickItem& item) {
    QTest::mouseMove(&window, middle(item));
    stage.settle(20);
}

void PartTest::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&window, key, modifiers);
    stage.settle(20);
}

void PartTest::repeatKey(Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(&window, &event);
    stage.settle(20);
}

void PartTest::type(const QString& text) {
    for (const QChar letter : text)
        QTest::keyClick(&window, letter.toLatin1());
    stage.settle(20);
}

QAccessibleInterface& PartTest::heard(QQuickItem& item) {
    return *QAccessible::queryAccessibleInterface(&item);
}

void PartTest::pressAsScreenReader(QQuickItem& item) {
    heard(item).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

bool PartTest::hasRing(QQuickItem& item) {
    const auto isShownRing = [](const QQuickItem& each) {
        return each.isVisible() && isOfType(each, u"FocusRing"_s);
    };
    return firstItem(item, isShownRing) != nullptr;
}

QString PartTest::tip() {
    const QQuickItem* plate = within(*window.contentItem(), u"TipPlate"_s);
    return plate != nullptr ? plate->property("words").toString() : QString();
}

bool PartTest::tipComes() {
    return QTest::qWaitFor([this] { return !tip().isEmpty(); }, 3000);
}

} // namespace vorq
