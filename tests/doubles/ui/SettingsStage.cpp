#include "doubles/ui/SettingsStage.h"

#include <QAccessible>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Sheets and toasts lie beside the page, so this looks through the whole window.
QQuickItem* firstOfStage(QQuickItem& from, const std::function<bool(const QQuickItem&)>& matches) {
    if (!from.isVisible()) return nullptr;
    if (matches(from)) return &from;
    for (QQuickItem* child : from.childItems())
        if (QQuickItem* found = firstOfStage(*child, matches)) return found;
    return nullptr;
}

QString nameOf(QQuickItem& item) {
    const QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&item);
    return heard != nullptr ? heard->text(QAccessible::Name) : QString();
}

} // namespace

SettingsStage::SettingsStage() {
    QAccessible::setActive(true);
    base.state->account().applyProfile(u"Mira"_s, u"Koskinen"_s, u"mira"_s, u"mira@example.org"_s);
    settings = std::make_unique<SettingsViewModel>(*base.state, &base.localSignIn, tools);
    look = std::make_unique<PanelLook>(base.state->appearance(), PanelLook::Surface::Window);
    context = std::make_unique<UiContext>(*settings, *look);
    engine = std::make_unique<QQmlEngine>();
    context->install(*engine);
}

SettingsStage::~SettingsStage() {
    window.reset();
    engine.reset();
    context.reset();
    settings.reset();
    QAccessible::setActive(false);
}

void SettingsStage::show(QSize size) {
    window = std::make_unique<QQuickView>(engine.get(), nullptr);
    window->setResizeMode(QQuickView::SizeRootObjectToView);
    window->resize(size);
    window->setSource(QUrl(u"qrc:/qt/qml/Vorq/settings/SettingsView.qml"_s));
    if (!window->rootObject()) qFatal("the settings do not load");
    window->show();
    window->requestActivate();
    settle();
}

void SettingsStage::settle(int milliseconds) {
    base.clock.advance(std::chrono::milliseconds(10));
    base.settle(milliseconds);
}

void SettingsStage::setDark(bool isDark) {
    base.state->appearance().setAppAppearance(isDark ? AppAppearancePreference::Dark
                                                     : AppAppearancePreference::Light);
    base.state->appearance().setPanelAppearance(isDark ? PanelAppearance::Current
                                                       : PanelAppearance::White);
}

void SettingsStage::open(SettingsNavigation::SettingsPane pane) {
    settings->navigation()->open(pane);
    settle();
}

QQuickItem* SettingsStage::saying(const QString& words) {
    return firstOfStage(*window->contentItem(), [&](const QQuickItem& item) {
        return item.property("text").toString() == words;
    });
}

QQuickItem& SettingsStage::find(const QString& type) {
    QQuickItem* found = firstOfStage(*window->contentItem(), [&](const QQuickItem& item) {
        return QString::fromLatin1(item.metaObject()->className()).startsWith(type + u"_QMLTYPE"_s);
    });
    if (found == nullptr) qFatal("there is no %s", qPrintable(type));
    return *found;
}

QQuickItem& SettingsStage::field(const QString& label) {
    QQuickItem* found = firstOfStage(*window->contentItem(), [&](const QQuickItem& item) {
        return item.property("label").toString() == label && item.property("input").isValid();
    });
    if (found == nullptr) qFatal("there is no field %s", qPrintable(label));
    return *found->property("input").value<QQuickItem*>();
}

void SettingsStage::click(const QString& words) {
    QQuickItem* item = saying(words);
    if (item == nullptr) qFatal("nothing says %s", qPrintable(words));
    QTest::mouseClick(window.get(), Qt::LeftButton, {},
                      item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    settle();
}

void SettingsStage::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(window.get(), key, modifiers);
    settle();
}

void SettingsStage::type(const QString& text) {
    for (const QChar letter : text)
        QTest::keyClick(window.get(), letter.toLatin1());
    settle(10);
}

QString SettingsStage::focused() {
    QQuickItem* item = window->activeFocusItem();
    return item != nullptr ? nameOf(*item) : QString();
}

} // namespace vorq
