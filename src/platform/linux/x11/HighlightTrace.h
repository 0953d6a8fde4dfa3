#pragma once

#include "platform/ProcessId.h"

#include <QPoint>
#include <QRect>

#include <cstdint>
#include <optional>
#include <unordered_map>

namespace vorq {

/// Follows, event by event, where the PRIMARY selection was made and whether it may be undone: an
/// application claims it for all of its windows, and some keep it after a deselect. What is not
/// known is never held against a highlight.
class HighlightTrace {
  public:
    using Window = std::uint32_t;

    /// A window that has the focus, and its process.
    struct Front {
        Window window = 0;
        ProcessId process = 0;
    };

    void windowCameToFront(Front front);

    /// Someone claimed the selection, or gave it up: then there is no process.
    void claimed(std::optional<ProcessId> owner);

    /// The left button. Places in pixels of the screen, times in milliseconds of the X server.
    void pressed(QPoint at, std::uint32_t time);
    /// `contents`: the place of the window in front; nothing if it is not known.
    void released(QPoint at, const std::optional<QRect>& contents);

    /// Whether the process made its highlight in another window than the one it had in front last.
    [[nodiscard]] bool isElsewhere(ProcessId process) const;

    /// Whether the user clicked into a window of the process, once and without moving, since it
    /// claimed the selection. Most programs deselect then.
    [[nodiscard]] bool isClickedAway(ProcessId process) const;

    /// Whether a click would say anything about the highlight.
    [[nodiscard]] bool isOwnerInFront() const { return m_owner && m_front.process == *m_owner; }

  private:
    struct Press {
        QPoint at;
        std::uint32_t time = 0;
        bool isRepeated = false;
        // Whether the selection was claimed since.
        bool hasSelected = false;
    };

    Front m_front;
    std::unordered_map<ProcessId, Window> m_lastWindows;
    std::optional<ProcessId> m_owner;
    // 0 if it was not in front as it claimed the selection.
    Window m_origin = 0;
    std::optional<Press> m_press;
    bool m_isClickedAway = false;
};

} // namespace vorq
