#pragma once

#include "platform/Clock.h"

#include <QString>

#include <optional>

namespace vorq {

class Defaults;

/// The text in the panel that has not been sent, kept in the settings so that it outlives the
/// program. Main thread only.
class PanelDraft {
  public:
    /// Both must outlive the draft, which stores its last text when it goes.
    PanelDraft(Clock& clock, Defaults& defaults) : m_clock(clock), m_defaults(defaults) {}
    PanelDraft(const PanelDraft&) = delete;
    PanelDraft& operator=(const PanelDraft&) = delete;
    ~PanelDraft();

    /// What is stored; "" if nothing is.
    [[nodiscard]] QString text() const;

    /// Stores the text when it has not changed for half a second, or after five seconds of changes.
    void keep(const QString& text);

    /// Forgets it at once: it has been sent.
    void drop();

  private:
    void store();

    Clock& m_clock;
    Defaults& m_defaults;
    std::optional<QString> m_waiting;
    Clock::Duration m_latest{};
    Clock::TimerId m_timer = 0; // of the text that waits
};

} // namespace vorq
