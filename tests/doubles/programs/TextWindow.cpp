// A window of Qt 6 with a text, the file of which is the argument, and a password.

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <QWidget>

using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QFile file(QApplication::arguments().value(1));
    if (!file.open(QIODevice::ReadOnly)) return 1;
    QWidget window;
    QPlainTextEdit text(QString::fromUtf8(file.readAll()));
    QLineEdit password(u"geheim"_s);
    password.setEchoMode(QLineEdit::Password);
    text.setTabChangesFocus(true);
    QVBoxLayout layout(&window);
    layout.addWidget(&text);
    layout.addWidget(&password);
    window.resize(500, 300);
    window.show();
    text.setFocus();
    return QApplication::exec();
}
