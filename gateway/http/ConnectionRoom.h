#pragma once

#include <cstddef>
#include <list>
#include <unordered_map>

namespace vorq::gateway {

/// A connection as the room knows it.
class Guest {
  public:
    virtual ~Guest() = default;
    /// Closes the connection, soon or at once.
    virtual void dismiss() = 0;
    /// Tells that the server stops.
    virtual void hearStop() = 0;
};

/// All connections of a server. There is room for a number of them, and for a number of bytes of
/// requests that are not whole yet. Beyond either, those go that have kept their request back for
/// longest; who has sent a whole request is never sent away. Used by one thread.
class ConnectionRoom {
  public:
    ConnectionRoom(std::size_t mostGuests, std::size_t mostBytes);

    /// `guest` is here until `leave`, and waits for its request.
    void enter(Guest& guest);
    /// How much of its request has come.
    void setBytes(Guest& guest, std::size_t bytes);
    /// Its request is whole.
    void settle(Guest& guest);
    void leave(Guest& guest);

    /// Sends the one away that has waited for longest; false if none waits.
    bool dismissOldest();
    void announceStop();

    [[nodiscard]] std::size_t guests() const { return m_guests.size(); }

  private:
    struct Place {
        bool waits = false;
        std::size_t bytes = 0;
        std::list<Guest*>::iterator turn;
    };
    void stopWaiting(Place& place);

    std::size_t m_mostGuests;
    std::size_t m_mostBytes;
    std::size_t m_bytes = 0;
    std::unordered_map<Guest*, Place> m_guests;
    /// Those that wait, the oldest first.
    std::list<Guest*> m_waiting;
};

} // namespace vorq::gateway
