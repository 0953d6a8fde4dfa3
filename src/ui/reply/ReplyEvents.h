#pragma once

#include <QAccessible>

namespace vorq {

class ReplyView;

/// Tells screen readers where in a reply the keyboard and the caret are and what is selected.
/// Without one it does nothing. Main thread only.
class ReplyEvents {
  public:
    /// The view must outlive this object.
    explicit ReplyEvents(ReplyView& view) : m_view(view) {}

    void handleFocus();
    void handleCaretMove();
    /// After the reply has grown: tells where the keyboard is now, if what had it is gone.
    void handleGrowth();
    /// These elements are no more.
    void forget(const QList<QAccessible::Id>& ended);

  private:
    [[nodiscard]] QAccessibleInterface* holder() const;
    void tellFocus(QAccessibleInterface& element);

    ReplyView& m_view;
    QAccessible::Id m_focused = 0; // who was told to have the keyboard last
    bool m_hadSelection = false;
};

} // namespace vorq
