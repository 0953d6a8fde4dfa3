#include "shell/selftest/SelfCheck.h"

#include <QCoreApplication>

namespace vorq {
namespace {

QString filled(QString text, const QStringList& arguments) {
    for (const QString& argument : arguments)
        text = text.arg(argument);
    return text;
}

} // namespace

QString SelfTestText::plain() const {
    return source == nullptr ? QString() : filled(QString::fromUtf8(source), arguments);
}

QString SelfTestText::translated() const {
    if (source == nullptr) return {};
    return filled(QCoreApplication::translate("SelfTest", source), arguments);
}

} // namespace vorq
