#pragma once

#include <array>
#include <cstddef>
#include <memory>

namespace vorq {

/// What of ours is open beside the panel.
enum class PanelHoldKind {
    /// It goes at a press anywhere else.
    Menu,
    /// It stays until the user has answered, and the panel with it, whatever key is pressed.
    Dialog,
};

/// Keeps the panel up as long as it lives; an empty one keeps nothing.
class PanelHold {
  public:
    PanelHold() = default;
    PanelHold(PanelHold&& other) noexcept;
    PanelHold& operator=(PanelHold&& other) noexcept;
    PanelHold(const PanelHold&) = delete;
    PanelHold& operator=(const PanelHold&) = delete;
    ~PanelHold() { giveBack(); }

    void giveBack();

    [[nodiscard]] explicit operator bool() const { return m_count != nullptr; }

  private:
    friend class PanelHolds;
    explicit PanelHold(std::shared_ptr<int> count);

    std::shared_ptr<int> m_count;
};

/// Counts who keeps the panel up. A hold may outlive it. Main thread only.
class PanelHolds {
  public:
    [[nodiscard]] PanelHold take(PanelHoldKind kind);

    [[nodiscard]] bool isHeld() const;
    [[nodiscard]] bool isHeld(PanelHoldKind kind) const { return *m_counts[index(kind)] > 0; }

  private:
    static constexpr std::size_t index(PanelHoldKind kind) {
        return static_cast<std::size_t>(kind);
    }

    std::array<std::shared_ptr<int>, 2> m_counts{std::make_shared<int>(0),
                                                 std::make_shared<int>(0)};
};

} // namespace vorq
