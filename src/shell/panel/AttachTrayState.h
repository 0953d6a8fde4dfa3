#pragma once

#include <QObject>

namespace vorq {

/// Whether the tray of what can be attached is open, and what it shows. Main thread only.
class AttachTrayState : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY shownChanged)
    Q_PROPERTY(vorq::AttachTrayState::Mode mode READ mode WRITE setMode NOTIFY modeChanged)

  public:
    enum class Mode { Root, Notes };
    Q_ENUM(Mode)

    [[nodiscard]] bool isShown() const { return m_isShown; }
    [[nodiscard]] Mode mode() const { return m_mode; }
    /// It opens at its root.
    void setShown(bool isShown);
    void setMode(Mode mode);

    /// Goes back from the notes to the root, or closes the tray; false if it is not open.
    bool closeInnermost();

  signals:
    void shownChanged();
    void modeChanged();

  private:
    bool m_isShown = false;
    Mode m_mode = Mode::Root;
};

} // namespace vorq
