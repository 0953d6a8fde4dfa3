#pragma once

#include <QFont>

namespace vorq {

/// Keeps the text of menus, alerts and dialogs at the size that the desktop wants. Needs a
/// QApplication. Main thread only.
class ApplicationFont final {
  public:
    ApplicationFont();

    /// Times the usual size.
    void setTextScale(double scale);

  private:
    QFont m_usual;
    double m_scale = 1;
};

} // namespace vorq
