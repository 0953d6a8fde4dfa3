#include "http/ConnectionRoom.h"

#include <vector>

namespace vorq::gateway {

ConnectionRoom::ConnectionRoom(std::size_t mostGuests, std::size_t mostBytes)
    : mostGuests_(mostGuests), mostBytes_(mostBytes) {}

void ConnectionRoom::enter(Guest& guest) {
    // In this order a guest for which memory was short is in no line.
    Place& place = guests_[&guest];
    place.turn = waiting_.insert(waiting_.end(), &guest);
    place.waits = true;
    if (guests_.size() > mostGuests_) dismissOldest();
}

void ConnectionRoom::setBytes(Guest& guest, std::size_t bytes) {
    const auto entry = guests_.find(&guest);
    if (entry == guests_.end() || !entry->second.waits) return;
    bytes_ += bytes - entry->second.bytes;
    entry->second.bytes = bytes;
    while (bytes_ > mostBytes_ && dismissOldest()) {
    }
}

void ConnectionRoom::stopWaiting(Place& place) {
    if (!place.waits) return;
    place.waits = false;
    bytes_ -= place.bytes;
    waiting_.erase(place.turn);
}

void ConnectionRoom::settle(Guest& guest) {
    if (const auto entry = guests_.find(&guest); entry != guests_.end()) {
        stopWaiting(entry->second);
    }
}

void ConnectionRoom::leave(Guest& guest) {
    const auto entry = guests_.find(&guest);
    if (entry == guests_.end()) return;
    stopWaiting(entry->second);
    guests_.erase(entry);
}

bool ConnectionRoom::dismissOldest() {
    if (waiting_.empty()) return false;
    Guest* oldest = waiting_.front();
    stopWaiting(guests_.at(oldest));
    oldest->dismiss();
    return true;
}

void ConnectionRoom::announceStop() {
    std::vector<Guest*> all;
    for (const auto& [guest, place] : guests_)
        all.push_back(guest);
    for (Guest* guest : all)
        guest->hearStop();
}

} // namespace vorq::gateway
