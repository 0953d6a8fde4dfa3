#include "doubles/ui/PanelStage.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

void collect(QQuickItem& item, const QString& type, QList<QQuickItem*>& found) {
    const QString name = QString::fromLatin1(item.metaObject()->className());
    if (name == type || name.startsWith(type + u"_QML"_s) || name == u"vorq::"_s + type)
        found += &item;
    for (QQuickItem* child : item.childItems())
        collect(*child, type, found);
}

} // namespace

PanelStage::PanelStage() {
    defaults.apply({{"vorq.session.token", "token"}, {"vorq.session.email", "a@b.c"}});
    state = std::make_unique<VorqAppState>(
        VorqAppState::Platform{clock, defaults, paths, transport, capture, notes});
    panel = std::make_unique<PanelViewModel>(*state, clock, reader, &localSignIn);
    look = std::make_unique<PanelLook>(state->appearance());
    context = std::make_unique<UiContext>(*panel, *look);
    engine = std::make_unique<QQmlEngine>();
    context->install(*engine);
}

PanelStage::~PanelStage() {
    window.reset();
    engine.reset();
    context.reset();
    panel.reset();
    state.reset();
    clock.settle();
}

void PanelStage::show(QSize size) {
    window = std::make_unique<QQuickView>(engine.get(), nullptr);
    window->setColor(Qt::transparent);
    window->setResizeMode(QQuickView::SizeRootObjectToView);
    window->resize(size);
    window->setSource(QUrl(u"qrc:/qt/qml/Vorq/panel/PanelView.qml"_s));
    if (!window->rootObject()) qFatal("the panel does not load");
    window->show();
    window->requestActivate();
    settle(20);
}

void PanelStage::settle(int milliseconds) {
    QElapsedTimer elapsed;
    elapsed.start();
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (elapsed.elapsed() < milliseconds) QThread::msleep(1);
    } while (elapsed.elapsed() < milliseconds);
}

void PanelStage::drawFrame() {
    int frames = 0;
    const auto counted =
        QObject::connect(window.get(), &QQuickWindow::frameSwapped, [&frames] { ++frames; });
    while (frames == 0) {
        window->update();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    }
    QObject::disconnect(counted);
}

void PanelStage::say(const QString& text) {
    VorqMessage message;
    message.text = text;
    state->panel().messages().append(message);
}

QUuid PanelStage::answer(const QString& text, bool isTyping,
                         const std::optional<VorqFollowUp>& followUp) {
    VorqMessage message;
    message.role = MessageRole::Assistant;
    message.text = text;
    message.isTyping = isTyping;
    message.followUp = followUp;
    state->panel().messages().append(message);
    return message.id;
}

QUuid PanelStage::work() {
    const VorqMessage message = VorqMessage::placeholder();
    state->panel().messages().append(message);
    return message.id;
}

void PanelStage::grow(const QUuid& id, const QString& text) {
    VorqMessage message = *state->panel().messages().find(id);
    message.isWorking = false;
    message.isTyping = true;
    message.text = text;
    state->panel().messages().update(message);
}

QList<QQuickItem*> PanelStage::findAll(const QString& type) {
    QList<QQuickItem*> found;
    collect(root(), type, found);
    return found;
}

QQuickItem* PanelStage::find(const QString& type) {
    return findAll(type).value(0);
}

QQuickItem& PanelStage::list() {
    return *find(u"ConversationView"_s);
}

} // namespace vorq
