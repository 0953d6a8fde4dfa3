#pragma once

#include "platform/Screens.h"
#include "platform/linux/x11/Struts.h"
#include "platform/linux/x11/X11Events.h"

class QScreen;

namespace vorq {

/// The screens of Qt. On X11 what bars leave free is read from the bars themselves, since the
/// window manager only tells one area for all monitors together. Needs a QGuiApplication.
class X11Screens final : public Screens {
  public:
    explicit X11Screens(QObject* parent = nullptr);
    ~X11Screens() override;

    [[nodiscard]] PortSupport supported() const override;
    [[nodiscard]] std::vector<Screen> screens() const override { return m_screens; }
    [[nodiscard]] QPointF pointer() const override;
    [[nodiscard]] std::optional<QRectF> windowFrame(WindowId window) const override;

  protected:
    [[nodiscard]] double baseline() const override { return m_baseline; }

  private:
    void watch(QScreen* screen);
    void refreshSoon();
    void refresh();
    [[nodiscard]] std::vector<Strut> struts() const;
    [[nodiscard]] std::vector<QRect> toldWorkAreas() const;
    [[nodiscard]] QRect visibleArea(const QRect& monitor) const;
    [[nodiscard]] QSize desktopSize() const;

    X11Connection m_requests;
    X11Events m_events;
    std::vector<X11Connection::Atom> m_watched;
    std::vector<Screen> m_screens;
    double m_baseline = 0;
    bool m_isRefreshDue = false;
};

} // namespace vorq
