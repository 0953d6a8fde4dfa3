// Shows a part of a page, the first argument, in a window.

#include "doubles/ui/PanelStage.h"
#include "doubles/ui/PartPage.h"

#include <QApplication>
#include <QQmlComponent>
#include <QQuickWindow>

using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    vorq::prepareUi();
    vorq::PanelStage stage;
    QQmlComponent component(stage.engine.get());
    component.setData(vorq::partPage(QApplication::arguments().value(1)),
                      QUrl(u"qrc:/test/Part.qml"_s));
    const std::unique_ptr<QQuickItem> root(qobject_cast<QQuickItem*>(component.create()));
    if (!root) qFatal("%s", qPrintable(component.errorString()));
    QQuickWindow window;
    window.resize(vorq::partWindow);
    root->setParentItem(window.contentItem());
    window.show();
    return QApplication::exec();
}
