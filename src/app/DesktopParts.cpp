#include "app/DesktopParts.h"

#include <QLoggingCategory>

namespace vorq {
namespace {

// Says in the log what a panel would do.
class NoPanel final : public PanelPresence {
  public:
    [[nodiscard]] bool isPanelVisible() const override { return m_isVisible; }
    void show() override { setVisible(true); }
    void hide() override { setVisible(false); }
    void setSuppressOutsideClose(bool) override {}
    void yieldFocus() override {}

  private:
    void setVisible(bool isVisible) {
        m_isVisible = isVisible;
        qWarning("Vorq: this build has no panel. It would be %s now.",
                 isVisible ? "shown" : "hidden");
    }

    bool m_isVisible = false;
};

} // namespace

DesktopParts standardParts() {
    return {
        .makeCapture = [](const CaptureContext&) { return std::make_unique<NoSelectionCapture>(); },
        .makeNotes = [](const NotesContext&) { return std::make_unique<NoNoteCapture>(); },
        .makePanel = [](const PanelContext&) { return std::make_unique<NoPanel>(); }};
}

} // namespace vorq
