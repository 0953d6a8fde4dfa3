#include "storage/SharedDatabase.h"

#include <thread>

namespace vorq::gateway {
namespace {

constexpr std::chrono::milliseconds kPause{10};

} // namespace

SharedDatabase::SharedDatabase(Database database, Reopen reopen)
    : reopen_(std::move(reopen)), writer_(std::move(database)), reader_(writer_.another()) {
    // SQLite's own waiting would keep the lock from the other threads.
    writer_.setPatience({});
    reader_.setPatience({});
}

SharedDatabase::Writing SharedDatabase::write() {
    std::optional<Writing> turn;
    toWrite_.attempt([&] { turn.emplace(beginWriting()); });
    return *std::move(turn);
}

std::optional<SharedDatabase::Writing> SharedDatabase::tryWrite() {
    try {
        return beginWriting();
    } catch (const DatabaseError& error) {
        if (!error.isBusy) throw;
        return std::nullopt;
    }
}

SharedDatabase::Writing SharedDatabase::beginWriting() {
    std::unique_lock lock(writing_);
    if (reopen_ && writer_.isReplaced()) {
        Database opened = reopen_();
        Database reader = opened.another();
        opened.setPatience({});
        reader.setPatience({});
        const std::scoped_lock reading(reading_);
        writer_ = std::move(opened);
        reader_ = std::move(reader);
    }
    return {std::move(lock), writer_};
}

bool SharedDatabase::isReplaced() {
    const std::scoped_lock lock(reading_);
    return reopen_ && reader_.isReplaced();
}

void SharedDatabase::Waiting::attempt(const std::function<void()>& work) {
    while (true) {
        try {
            work();
            const std::scoped_lock lock(mutex_);
            heldSince_.reset();
            return;
        } catch (const DatabaseError& error) {
            if (!error.isBusy || heldFor() > kPatience) throw;
        }
        std::this_thread::sleep_for(kPause);
    }
}

std::chrono::steady_clock::duration SharedDatabase::Waiting::heldFor() {
    const std::scoped_lock lock(mutex_);
    const Moment now = std::chrono::steady_clock::now();
    // Whether it was free between two attempts that lie far apart, nobody knows.
    if (!heldSince_ || now - lastHeld_ > kPatience) heldSince_ = now;
    lastHeld_ = now;
    return now - *heldSince_;
}

} // namespace vorq::gateway
