#pragma once

#include "support/async/Wakeup.h"

#include <list>
#include <memory>

namespace vorq {

/// Lets coroutines do something one after the other, in the order in which they took their turns,
/// however long each prepares itself before. Main thread only.
class TurnQueue {
  public:
    /// A place in the queue, given up when this is destroyed. It may outlive the queue.
    class Turn {
      public:
        Turn(Turn&& other) noexcept;
        Turn& operator=(Turn&&) = delete;
        ~Turn();

        /// Awaited once: comes when every earlier turn has been given up.
        [[nodiscard]] Wakeup begins() const { return *m_place; }

      private:
        friend class TurnQueue;
        using Places = std::list<Wakeup>;
        explicit Turn(std::shared_ptr<Places> places);

        std::shared_ptr<Places> m_places; // null once moved from
        Places::iterator m_place;
    };

    [[nodiscard]] Turn takeTurn() { return Turn(m_places); }

  private:
    std::shared_ptr<Turn::Places> m_places = std::make_shared<Turn::Places>();
};

} // namespace vorq
