#pragma once

#include "doubles/ui/PanelStage.h"

#include <QQuickView>

namespace vorq {

/// The kit in a window, a page for each control. Controls that a page names "want:STATE" are
/// brought into that state; one that wants the focus gets it as Tab would give it.
class GalleryView : public QQuickView {
    Q_OBJECT

  public:
    explicit GalleryView(PanelStage& stage);

    [[nodiscard]] int pageCount() const;
    [[nodiscard]] QString pageName() const;
    void setPage(int page);
    void setDark(bool isDark);

    /// The page with all its states, each control that wants the focus with its ring.
    [[nodiscard]] QImage picture();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void step(int by);
    void bringIntoStates();
    [[nodiscard]] QList<QQuickItem*> wanting(const QString& state) const;

    PanelStage& m_stage;
    bool m_isDark = true;
    bool m_hasContrast = false;
    bool m_hasMotion = true;
};

} // namespace vorq
