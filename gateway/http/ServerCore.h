#pragma once

#include "http/ConnectionRoom.h"
#include "http/RequestRouter.h"
#include "http/StartGate.h"
#include "http/WorkerPool.h"

#include <boost/asio/io_context.hpp>

#include <atomic>
#include <cstddef>

namespace vorq::gateway {

/// What the connections of a server share. All but `router`, `stopping`, `largeBytes` and the pools
/// belongs to the thread that runs `io`, which carries all sockets and never waits for anything
/// else.
struct ServerCore {
    ServerCore(RequestRouter& requestRouter, std::size_t mostConnections)
        : router(requestRouter), room(mostConnections, kMostWaitingBytes) {}

    /// Of requests that are not whole and whose sender is not known.
    static constexpr std::size_t kMostWaitingBytes = std::size_t{64} * 1024 * 1024;
    /// Of large requests whose sender is known, until they are read.
    static constexpr std::size_t kMostLargeBytes = std::size_t{64} * 1024 * 1024;
    static constexpr std::size_t kPoolThreads = 4;
    /// Enough to keep the pools busy.
    static constexpr std::size_t kMostStarts = 32;
    static constexpr std::size_t kLongestQueue = 4096;
    /// Some ten seconds' worth.
    static constexpr std::size_t kMostHashes = 128;

    RequestRouter& router;
    std::atomic<bool> stopping = false;
    ConnectionRoom room;
    /// Taken by that thread alone; given back by any.
    std::atomic<std::size_t> largeBytes = 0;
    StartGate starts{kMostStarts};
    boost::asio::io_context io{1};
    /// Tokens and accounts, each a matter of milliseconds, are never behind what takes long.
    WorkerPool accounts{kPoolThreads, kLongestQueue};
    WorkerPool computing{kPoolThreads, kLongestQueue};
    /// Passwords are hashed one at a time, and who has to wait for it keeps no other thread.
    WorkerPool hashing{1, kMostHashes};
};

} // namespace vorq::gateway
