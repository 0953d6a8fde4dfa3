#include "app/testwindow/TestWindowWidget.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int textHeight = 56;
constexpr int leastWidth = 420;

} // namespace

TestWindowWidget::TestWindowWidget() {
    setWindowTitle(u"Vorq Self-Test"_s);
    auto* note = new QLabel(tr("Vorq tries out what works. It takes a moment."), this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(note);
    layout->addWidget(&m_text);
    m_text.setFixedHeight(textHeight);
    setMinimumWidth(leastWidth);
}

void TestWindowWidget::show(const QString& text, bool handsOut) {
    m_text.setPlainText(text);
    QWidget::show();
    m_text.setFocus();
    if (!handsOut) return m_text.selectAll();
    // What the toolkit selects by itself it hands out to nobody.
    QKeyEvent all(QEvent::KeyPress, Qt::Key_A, Qt::ControlModifier);
    QCoreApplication::sendEvent(&m_text, &all);
}

void TestWindowWidget::highlight(int location, int length) {
    QTextCursor cursor = m_text.textCursor();
    const int end = static_cast<int>(m_text.toPlainText().size());
    cursor.setPosition(qBound(0, location, end));
    cursor.setPosition(qBound(0, location + length, end), QTextCursor::KeepAnchor);
    m_text.setTextCursor(cursor);
}

void TestWindowWidget::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    if (m_isShown) return;
    m_isShown = true;
    emit shown();
}

} // namespace vorq
