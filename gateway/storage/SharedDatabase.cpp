#include "storage/SharedDatabase.h"

#include <thread>

namespace vorq::gateway {
namespace {

constexpr std::chrono::milliseconds kPause{10};

} // namespace

SharedDatabase::SharedDatabase(Database database)
    : writer_(std::move(database)), reader_(writer_.another()) {
    // SQLite's own waiting would keep the lock from the other threads.
    writer_.setPatience({});
    reader_.setPatience({});
}

SharedDatabase::Writing SharedDatabase::write() {
    std::optional<Writing> turn;
    toWrite_.attempt([&] { turn.emplace(Writing(std::unique_lock(writing_), writer_)); });
    return *std::move(turn);
}

std::optional<SharedDatabase::Writing> SharedDatabase::tryWrite() {
    try {
        return Writing(std::unique_lock(writing_), writer_);
    } catch (const DatabaseError& error) {
        if (!error.isBusy) throw;
        return std::nullopt;
    }
}

void SharedDatabase::Waiting::attempt(const std::function<void()>& work) {
    while (true) {
        try {
            work();
            const std::scoped_lock lock(mutex_);
            heldSince_.reset();
            return;
        } catch (const DatabaseError& error) {
            if (!error.isBusy || std::chrono::steady_clock::now() - heldSince() > kPatience) throw;
        }
        std::this_thread::sleep_for(kPause);
    }
}

SharedDatabase::Moment SharedDatabase::Waiting::heldSince() {
    const std::scoped_lock lock(mutex_);
    if (!heldSince_) heldSince_ = std::chrono::steady_clock::now();
    return *heldSince_;
}

} // namespace vorq::gateway
