#pragma once

#include "ui/native/TextSelecting.h"

#include <QTextCursor>
#include <QtQml/qqmlregistration.h>

class QKeyEvent;

namespace vorq {

/// Selects text of a TextEdit by the keyboard, in place of the item itself. Main thread only.
class KeySelection : public vorq::TextSelecting {
    Q_OBJECT
    QML_ELEMENT

  public:
    using TextSelecting::TextSelecting;

  protected:
    bool handle(QEvent& event) override;
    void forget() override { m_cursor = {}; }

  private:
    [[nodiscard]] bool handleKey(const QKeyEvent& event);
    void extend(QTextCursor::MoveOperation operation);
    void updateCursor();

    // Remembers the column of a selection that goes up or down past shorter lines.
    QTextCursor m_cursor;
};

} // namespace vorq
