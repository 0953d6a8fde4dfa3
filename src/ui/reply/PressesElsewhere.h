#pragma once

#include <QObject>

namespace vorq {

class ReplyView;

/// Drops what is selected in a reply at a press elsewhere: anywhere but on the selection, the pill
/// above it, and a menu about it. Main thread only.
class PressesElsewhere final : public QObject {
    Q_OBJECT

  public:
    /// The view must outlive this object.
    explicit PressesElsewhere(ReplyView& view) : m_view(view) {}
    ~PressesElsewhere() override { watch(false); }

    /// For as long as something is selected.
    void watch(bool isOn);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    ReplyView& m_view;
    bool m_isWatching = false;
};

} // namespace vorq
