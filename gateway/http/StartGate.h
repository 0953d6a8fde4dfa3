#pragma once

#include <cstddef>
#include <functional>
#include <list>

namespace vorq::gateway {

/// Lets a number of requests for replies begin at a time, in the order of their coming. So when a
/// crowd of them comes at once, what others ask for is never behind the whole crowd. Used by one
/// thread.
class StartGate {
  public:
    explicit StartGate(std::size_t mostInside) : m_mostInside(mostInside) {}
    StartGate(const StartGate&) = delete;
    StartGate& operator=(const StartGate&) = delete;

    /// One who comes, waits its turn, and leaves when it is destroyed, from inside or from the
    /// line.
    class Visitor {
      public:
        /// `call` tells that the gate has opened, unless it was open at once. It may not destroy a
        /// visitor.
        Visitor(StartGate& gate, std::function<void()> call);
        ~Visitor();
        Visitor(const Visitor&) = delete;
        Visitor& operator=(const Visitor&) = delete;

        [[nodiscard]] bool isInside() const { return m_isInside; }

      private:
        friend class StartGate;
        StartGate& m_gate;
        std::function<void()> m_call;
        std::list<Visitor*>::iterator m_turn;
        bool m_isInside = false;
    };

  private:
    void admitNext();

    std::size_t m_mostInside;
    std::size_t m_inside = 0;
    /// The first to come first.
    std::list<Visitor*> m_line;
};

} // namespace vorq::gateway
