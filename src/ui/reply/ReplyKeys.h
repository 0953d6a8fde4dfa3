#pragma once

#include <Qt>

class QKeyEvent;

namespace vorq {

class ReplyView;

/// What keys do in a reply: they move the caret, select, copy, follow links and deepen what is
/// selected. Main thread only.
class ReplyKeys {
  public:
    /// The view must outlive this object.
    explicit ReplyKeys(ReplyView& view) : m_view(view) {}

    /// Gives whether it is a key of the reply; another is for those around it.
    [[nodiscard]] bool handleKey(const QKeyEvent& event);
    void handleFocus(Qt::FocusReason reason);
    void handleFocusLoss(Qt::FocusReason reason);

  private:
    [[nodiscard]] bool handleEnter();

    ReplyView& m_view;
};

} // namespace vorq
