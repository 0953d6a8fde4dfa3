#include "shell/status/FactMenu.h"

#include "shell/look/Contrast.h"

#include <QStyleOptionMenuItem>

namespace vorq {
namespace {

constexpr const char* factProperty = "vorqIsFact";
constexpr float factInk = 0.72F; // of the ink of what can be chosen

} // namespace

void FactMenu::setFact(QAction* entry, bool isFact) {
    entry->setEnabled(!isFact);
    entry->setProperty(factProperty, isFact);
}

QAction* FactMenu::addFact(const QString& text) {
    return insertFact(nullptr, text);
}

QAction* FactMenu::insertFact(QAction* before, const QString& text) {
    auto* fact = new QAction(text, this);
    setFact(fact, true);
    insertAction(before, fact);
    return fact;
}

// What is disabled is too pale to be read.
void FactMenu::initStyleOption(QStyleOptionMenuItem* option, const QAction* entry) const {
    QMenu::initStyleOption(option, entry);
    if (!entry->property(factProperty).toBool()) return;
    const QColor ground = option->palette.color(QPalette::Active, QPalette::Base);
    const QColor ink = option->palette.color(QPalette::Active, QPalette::Text);
    QColor quiet = ink;
    quiet.setAlphaF(factInk);
    const QColor readable = Contrast::readable(Contrast::over(quiet, ground), ground, ink);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        option->palette.setColor(QPalette::Disabled, role, readable);
}

} // namespace vorq
