#pragma once

#include <QPlainTextEdit>
#include <QWidget>

namespace vorq {

/// A text in a window of its own, with a line that says what it is for.
class TestWindowWidget final : public QWidget {
    Q_OBJECT

  public:
    TestWindowWidget();

    [[nodiscard]] QString text() const { return m_text.toPlainText(); }

    /// Shows the text, all of it highlighted, and hands it out as a highlight of the user is.
    void show(const QString& text, bool handsOut);
    void highlight(int location, int length);

  signals:
    /// It is on the screen.
    void shown();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    bool m_isShown = false;
    QPlainTextEdit m_text;
};

} // namespace vorq
