// A window of Qt 6 with a list of accounts, as password managers show it: copying an account copies
// its password, the argument, and marks it as a secret.

#include <QApplication>
#include <QClipboard>
#include <QListWidget>
#include <QMimeData>
#include <QShortcut>

using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QListWidget accounts;
    accounts.addItem(u"Bank"_s);
    accounts.setCurrentRow(0);
    const QShortcut copy(QKeySequence::Copy, &accounts);
    QObject::connect(&copy, &QShortcut::activated, &accounts, [] {
        auto* password = new QMimeData;
        password->setText(QApplication::arguments().value(1));
        password->setData(u"x-kde-passwordManagerHint"_s, "secret");
        QApplication::clipboard()->setMimeData(password);
    });
    accounts.show();
    return QApplication::exec();
}
