#include "storage/SharedDatabase.h"

#include <thread>

namespace vorq::gateway {
namespace {

constexpr std::chrono::milliseconds kPause{10};

} // namespace

SharedDatabase::SharedDatabase(Database database, Reopen reopen)
    : m_reopen(std::move(reopen)), m_writer(std::move(database)), m_reader(m_writer.another()) {
    // SQLite's own waiting would keep the lock from the other threads.
    m_writer.setPatience({});
    m_reader.setPatience({});
}

SharedDatabase::Writing SharedDatabase::write() {
    std::optional<Writing> turn;
    m_toWrite.attempt([&] { turn.emplace(beginWriting()); });
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
    std::unique_lock lock(m_writing);
    if (m_reopen && m_writer.isReplaced()) {
        Database opened = m_reopen();
        Database reader = opened.another();
        opened.setPatience({});
        reader.setPatience({});
        const std::scoped_lock reading(m_reading);
        m_writer = std::move(opened);
        m_reader = std::move(reader);
    }
    return {std::move(lock), m_writer};
}

bool SharedDatabase::isReplaced() {
    const std::scoped_lock lock(m_reading);
    return m_reopen && m_reader.isReplaced();
}

void SharedDatabase::Waiting::attempt(const std::function<void()>& work) {
    while (true) {
        try {
            work();
            const std::scoped_lock lock(m_mutex);
            m_heldSince.reset();
            return;
        } catch (const DatabaseError& error) {
            if (!error.isBusy || heldFor() > kPatience) throw;
        }
        std::this_thread::sleep_for(kPause);
    }
}

std::chrono::steady_clock::duration SharedDatabase::Waiting::heldFor() {
    const std::scoped_lock lock(m_mutex);
    const Moment now = std::chrono::steady_clock::now();
    // Whether it was free between two attempts that lie far apart, nobody knows.
    if (!m_heldSince || now - m_lastHeld > kPatience) m_heldSince = now;
    m_lastHeld = now;
    return now - *m_heldSince;
}

} // namespace vorq::gateway
