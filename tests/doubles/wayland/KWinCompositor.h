#pragma once

#include "doubles/wayland/VirtualSeat.h"
#include "doubles/wayland/WaylandCompositor.h"

namespace vorq::desktop {

/// The compositor of KDE, which lets windows overlap.
class KWinCompositor final : public WaylandCompositor {
  public:
    KWinCompositor(DesktopSession& session, QSize screen);
    ~KWinCompositor() override;

    [[nodiscard]] QProcessEnvironment environment() const override { return m_variables; }
    [[nodiscard]] VirtualSeat& seat() override { return *m_seat; }
    [[nodiscard]] QRect windowOf(std::int32_t process) override;
    [[nodiscard]] bool isInFront(std::int32_t process) override;
    void bind(QChar letter, const QString& command) override;

  private:
    struct Window {
        QRect place;
        bool isActive = false;
    };

    [[nodiscard]] Window find(std::int32_t process);
    QByteArray tell(const QString& service, const QString& path, const QString& method,
                    const QStringList& arguments) const;

    DesktopSession& m_session;
    QProcessEnvironment m_variables;
    DesktopProgram* m_program = nullptr;
    std::unique_ptr<VirtualSeat> m_seat;
    int m_questions = 0;
};

} // namespace vorq::desktop
