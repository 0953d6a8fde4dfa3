#pragma once

#include "doubles/wayland/VirtualSeat.h"
#include "doubles/wayland/WaylandCompositor.h"

#include <QDBusConnection>
#include <QJsonValue>

namespace vorq::desktop {

/// The compositor of GNOME with its shell, which lets windows overlap.
class GnomeCompositor final : public WaylandCompositor {
  public:
    GnomeCompositor(DesktopSession& session, QSize screen);
    ~GnomeCompositor() override;

    [[nodiscard]] QProcessEnvironment environment() const override { return m_variables; }
    [[nodiscard]] VirtualSeat& seat() override { return *m_seat; }
    [[nodiscard]] QRect windowOf(std::int32_t process) override;
    [[nodiscard]] bool isInFront(std::int32_t process) override;
    void bind(QChar letter, const QString& command) override;

  private:
    [[nodiscard]] bool isAtRest() const;
    /// What an expression in the shell comes to; undefined if the shell does not answer.
    [[nodiscard]] QJsonValue ask(const QString& expression) const;
    void set(const QString& schema, const QString& key, const QString& value) const;

    DesktopSession& m_session;
    QDBusConnection m_bus;
    QProcessEnvironment m_variables;
    std::unique_ptr<VirtualSeat> m_seat;
    DesktopProgram* m_shortcuts = nullptr;
    QStringList m_bound;
};

} // namespace vorq::desktop
