// Shows what stands between the braces of an item, the first argument, in a window of 600 by 400
// points. `root` is that item, with an integer `presses`.

#include "doubles/ui/PanelStage.h"

#include <QApplication>
#include <QQmlComponent>
#include <QQuickWindow>

int main(int argc, char** argv) {
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    vorq::prepareUi();
    vorq::PanelStage stage;
    QQmlComponent component(stage.engine.get());
    const QString body = QApplication::arguments().value(1);
    component.setData(("import QtQuick\nimport Vorq\nItem { id: root; width: 600; height: 400\n"
                       "property int presses: 0\n" +
                       body + "}")
                          .toUtf8(),
                      QUrl(QStringLiteral("qrc:/test/Part.qml")));
    const std::unique_ptr<QQuickItem> root(qobject_cast<QQuickItem*>(component.create()));
    if (!root) qFatal("%s", qPrintable(component.errorString()));
    QQuickWindow window;
    window.resize(600, 400);
    root->setParentItem(window.contentItem());
    window.show();
    return QApplication::exec();
}
