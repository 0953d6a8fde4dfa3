#include "http/ConnectionRoom.h"

#include <vector>

namespace vorq::gateway {

ConnectionRoom::ConnectionRoom(std::size_t mostGuests, std::size_t mostBytes)
    : m_mostGuests(mostGuests), m_mostBytes(mostBytes) {}

void ConnectionRoom::enter(Guest& guest) {
    // In this order a guest for which memory was short is in no line.
    Place& place = m_guests[&guest];
    place.turn = m_waiting.insert(m_waiting.end(), &guest);
    place.waits = true;
    if (m_guests.size() > m_mostGuests) dismissOldest();
}

void ConnectionRoom::setBytes(Guest& guest, std::size_t bytes) {
    const auto entry = m_guests.find(&guest);
    if (entry == m_guests.end() || !entry->second.waits) return;
    m_bytes += bytes - entry->second.bytes;
    entry->second.bytes = bytes;
    while (m_bytes > m_mostBytes && dismissOldest()) {
    }
}

void ConnectionRoom::stopWaiting(Place& place) {
    if (!place.waits) return;
    place.waits = false;
    m_bytes -= place.bytes;
    m_waiting.erase(place.turn);
}

void ConnectionRoom::settle(Guest& guest) {
    if (const auto entry = m_guests.find(&guest); entry != m_guests.end()) {
        stopWaiting(entry->second);
    }
}

void ConnectionRoom::leave(Guest& guest) {
    const auto entry = m_guests.find(&guest);
    if (entry == m_guests.end()) return;
    stopWaiting(entry->second);
    m_guests.erase(entry);
}

bool ConnectionRoom::dismissOldest() {
    if (m_waiting.empty()) return false;
    Guest* oldest = m_waiting.front();
    stopWaiting(m_guests.at(oldest));
    oldest->dismiss();
    return true;
}

void ConnectionRoom::announceStop() {
    std::vector<Guest*> all;
    for (const auto& [guest, place] : m_guests)
        all.push_back(guest);
    for (Guest* guest : all)
        guest->hearStop();
}

} // namespace vorq::gateway
