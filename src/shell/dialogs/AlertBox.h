#pragma once

#include "shell/notices/Alert.h"

#include <QMessageBox>
#include <QPointer>

#include <functional>

namespace vorq {

/// Alerts in windows of their own, above all others, one at a time. Needs a QApplication. Main
/// thread only.
class AlertBox final {
  public:
    /// Calls back with the index of the button; closing the window takes the last one.
    using Chosen = std::function<void(qsizetype button)>;

    AlertBox() = default;
    AlertBox(const AlertBox&) = delete;
    AlertBox& operator=(const AlertBox&) = delete;
    /// An alert that is open goes without an answer.
    ~AlertBox();

    /// Another alert that is open goes without an answer; the same one comes forward and keeps
    /// whom it tells.
    void show(const Alert& alert, Chosen chosen);

    /// Null while there is none.
    [[nodiscard]] QMessageBox* box() const { return m_box; }

  private:
    void close();
    void answer(const Chosen& chosen);
    void bringForward() const;

    Alert m_alert;
    QPointer<QMessageBox> m_box;
};

} // namespace vorq
