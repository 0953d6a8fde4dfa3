#pragma once

#include "doubles/wayland/VirtualSeat.h"
#include "doubles/wayland/WaylandCompositor.h"

#include <QJsonObject>

#include <optional>

namespace vorq::desktop {

/// sway, which tiles its windows.
class SwayCompositor final : public WaylandCompositor {
  public:
    SwayCompositor(DesktopSession& session, QSize screen);
    ~SwayCompositor() override;

    [[nodiscard]] QProcessEnvironment environment() const override { return m_variables; }
    [[nodiscard]] VirtualSeat& seat() override { return *m_seat; }
    [[nodiscard]] QRect windowOf(std::int32_t process) override;
    [[nodiscard]] bool isInFront(std::int32_t process) override;
    void bind(QChar letter, const QString& command) override;

  private:
    QByteArray tell(const QStringList& message) const;
    [[nodiscard]] std::optional<QJsonObject> find(std::int32_t process) const;

    DesktopSession& m_session;
    QProcessEnvironment m_variables;
    std::unique_ptr<WlrootsSeat> m_seat;
};

} // namespace vorq::desktop
