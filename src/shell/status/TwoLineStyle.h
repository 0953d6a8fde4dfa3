#pragma once

#include <QProxyStyle>

namespace vorq {

/// Draws the entries of a menu that have a tab in two lines: what stands before it, and below,
/// smaller and paler, what stands behind it; in one line if nothing does. A bar that draws the menu
/// itself shows the text as it is.
class TwoLineStyle final : public QProxyStyle {
  public:
    /// In the look that the application has by now.
    TwoLineStyle();

    // In pixels of the desktop's scale.
    static constexpr int width = 280;
    static constexpr int greatestWidth = 420;
    static constexpr int height = 40;

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option,
                                         const QSize& contents,
                                         const QWidget* widget) const override;
};

} // namespace vorq
