#include "ui/native/accessible/PasswordAccessible.h"

#include <QQuickItem>

namespace vorq {

QString PasswordAccessible::shown() const {
    return subject().property("displayText").toString();
}

QString PasswordAccessible::text(QAccessible::Text kind) const {
    return kind == QAccessible::Value ? shown() : ItemAccessible::text(kind);
}

QAccessible::State PasswordAccessible::state() const {
    QAccessible::State state = ItemAccessible::state();
    state.focusable = subject().activeFocusOnTab();
    state.focused = subject().hasActiveFocus();
    state.readOnly = subject().property("readOnly").toBool();
    state.editable = !state.readOnly;
    constexpr int plain = 0; // TextInput.Normal
    state.passwordEdit = subject().property("echoMode").toInt() != plain;
    return state;
}

void* PasswordAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                              : ItemAccessible::interface_cast(type);
}

void PasswordAccessible::selection(int, int* start, int* end) const {
    *start = 0;
    *end = 0;
}

int PasswordAccessible::cursorPosition() const {
    return subject().property("cursorPosition").toInt();
}

void PasswordAccessible::setCursorPosition(int position) {
    subject().setProperty("cursorPosition", position);
}

QString PasswordAccessible::text(int start, int end) const {
    return shown().mid(start, end - start);
}

int PasswordAccessible::characterCount() const {
    return static_cast<int>(shown().size());
}

QString PasswordAccessible::attributes(int, int* start, int* end) const {
    *start = 0;
    *end = characterCount();
    return {};
}

} // namespace vorq
