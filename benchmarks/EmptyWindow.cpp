// The least that a Qt Quick program can be: an empty window. It says "ready" once that is drawn.

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <cstdio>
#include <memory>

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nWindow { width: 440; height: 750; visible: true }", QUrl());
    const std::unique_ptr<QObject> object(component.create());
    auto* window = qobject_cast<QQuickWindow*>(object.get());
    if (!window) return 1;
    QObject::connect(
        window, &QQuickWindow::frameSwapped, window,
        [] {
            std::puts("ready");
            std::fflush(stdout);
        },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    return QGuiApplication::exec();
}
