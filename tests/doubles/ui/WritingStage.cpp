#include "doubles/ui/WritingStage.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

QQuickItem* find(QQuickItem& item, const QString& words) {
    if (!item.isVisible()) return nullptr;
    const bool isText = item.property("text").toString() == words;
    QAccessibleInterface* heard = isText ? nullptr : QAccessible::queryAccessibleInterface(&item);
    if (isText || (heard != nullptr && heard->text(QAccessible::Name) == words)) return &item;
    for (QQuickItem* child : item.childItems())
        if (QQuickItem* found = find(*child, words)) return found;
    return nullptr;
}

} // namespace

WritingStage::WritingStage(const QString& original) {
    defaults.apply({{"vorq.session.token", "token"}, {"vorq.session.email", "a@b.c"}});
    state = std::make_unique<VorqAppState>(
        VorqAppState::Platform{clock, defaults, paths, transport, capture, notes});
    card = std::make_unique<WritingCard>(state->account(), state->signIn(), &localSignIn);
    session = std::make_unique<WritingToolsModel>(
        WritingToolsModel::Services{clock, state->api(), state->account(), replacer},
        WritingSelection{.originalText = original,
                         .sourcePID = 1,
                         .window = {},
                         .selectedRange = {},
                         .clickPoint = {},
                         .selectionScreenFrame = {},
                         .selectionReliable = true});
    card->setSession(session.get());
    look = std::make_unique<PanelLook>(state->appearance(), PanelLook::Surface::Window);
    context = std::make_unique<UiContext>(*card, *look);
    engine = std::make_unique<QQmlEngine>();
    context->install(*engine);
}

WritingStage::~WritingStage() {
    window.reset();
    engine.reset();
    context.reset();
    look.reset();
    card->setSession(nullptr);
    session.reset();
    card.reset();
    state.reset();
    clock.settle();
}

void WritingStage::show(bool pointsUp, double tipX) {
    window = std::make_unique<QQuickView>(engine.get(), nullptr);
    window->setColor(Qt::transparent);
    window->setResizeMode(QQuickView::SizeRootObjectToView);
    window->setSource(QUrl(u"qrc:/qt/qml/Vorq/writing/WritingView.qml"_s));
    if (!window->rootObject()) qFatal("the card does not load");
    card->setPlace(pointsUp, tipX);
    fit();
    window->show();
    window->requestActivate();
    settle(20);
    fit();
    settle(20);
}

void WritingStage::fit() {
    QMetaObject::invokeMethod(&root(), "layOut");
    const int room = 2 * WritingCard::shadowMargin;
    window->resize(qRound(root().implicitWidth()) + room, qRound(root().implicitHeight()) + room);
}

void WritingStage::settle(int milliseconds) {
    QElapsedTimer elapsed;
    elapsed.start();
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (elapsed.elapsed() < milliseconds) QThread::msleep(1);
    } while (elapsed.elapsed() < milliseconds);
}

void WritingStage::suggest(const QString& ask, const QString& summary) {
    card->setDraft(ask);
    card->submit();
    clock.settle();
    answer(200, QJsonDocument(QJsonObject{{"summary", summary},
                                          {"feedback", ""},
                                          {"corrections", ""},
                                          {"sources", QJsonArray()}})
                    .toJson(QJsonDocument::Compact));
}

void WritingStage::answer(int status, const QByteArray& body) {
    transport.last().respond(status, body);
    clock.settle();
}

void WritingStage::replace() {
    card->replace();
    clock.advance(std::chrono::milliseconds(100));
    clock.settle();
}

QQuickItem* WritingStage::saying(const QString& words) {
    return find(root(), words);
}

void WritingStage::click(const QString& words) {
    fit();
    settle(30);
    const QQuickItem* item = saying(words);
    if (item == nullptr) qFatal("nothing says %s", qUtf8Printable(words));
    QTest::mouseClick(window.get(), Qt::LeftButton, {},
                      item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    clock.settle();
    settle();
}

void WritingStage::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(window.get(), key, modifiers);
    clock.settle();
    settle();
}

void WritingStage::type(const QString& text) {
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, window.get(), Qt::Key_A, QString(character), {});
    settle();
}

} // namespace vorq
