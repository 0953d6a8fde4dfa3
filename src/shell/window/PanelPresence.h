#pragma once

namespace vorq {

/// The panel as the rest of the shell deals with it. Main thread only.
class PanelPresence {
  public:
    PanelPresence() = default;
    PanelPresence(const PanelPresence&) = delete;
    PanelPresence& operator=(const PanelPresence&) = delete;
    virtual ~PanelPresence() = default;

    /// Does a piece of what the first showing would otherwise take its time for, briefly enough for
    /// nobody to notice. False when nothing is left to do.
    virtual bool prepareFurther() { return false; }

    [[nodiscard]] virtual bool isPanelVisible() const = 0;

    /// Brings the panel up with the prompt in focus, also if it is up already.
    virtual void show() = 0;

    /// Brings the panel up and leaves the keyboard with whoever has it.
    virtual void showBeside() = 0;

    /// Takes the panel down and gives the focus back to where it came from.
    virtual void hide() = 0;

    /// Takes the keyboard from the panel without hiding it, for a menu that is about to open.
    virtual void yieldFocus() = 0;
};

} // namespace vorq
