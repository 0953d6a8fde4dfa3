#include "provider/TransferLoop.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <new>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace vorq::gateway {
namespace {

using Steady = std::chrono::steady_clock;

struct MultiCleanup {
    void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
};

class Descriptor {
  public:
    explicit Descriptor(int number) : m_number(number) {
        if (m_number < 0) throw std::system_error(errno, std::generic_category());
    }
    ~Descriptor() { close(m_number); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int number() const { return m_number; }

  private:
    int m_number;
};

CURLM* newMulti() {
    static std::once_flag flag;
    std::call_once(flag, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    CURLM* multi = curl_multi_init();
    if (multi == nullptr) throw std::bad_alloc();
    return multi;
}

std::uint32_t pollEvents(int what) {
    const std::uint32_t in = (what & CURL_POLL_IN) != 0 ? std::uint32_t{EPOLLIN} : 0U;
    const std::uint32_t out = (what & CURL_POLL_OUT) != 0 ? std::uint32_t{EPOLLOUT} : 0U;
    return in | out;
}

int curlEvents(std::uint32_t events) {
    int mask = 0;
    if ((events & EPOLLIN) != 0) mask |= CURL_CSELECT_IN;
    if ((events & EPOLLOUT) != 0) mask |= CURL_CSELECT_OUT;
    if ((events & (EPOLLERR | EPOLLHUP)) != 0) mask |= CURL_CSELECT_ERR;
    return mask;
}

} // namespace

class TransferLoop::Implementation {
  public:
    Implementation();
    ~Implementation();
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;

    using Command = std::move_only_function<void()>;
    void post(Command command);
    void start(std::shared_ptr<LoopTransfer> transfer);
    void drop(LoopTransfer& transfer) noexcept;
    void resume(LoopTransfer& transfer);

  private:
    static int onSocket(CURL*, curl_socket_t socket, int what, void* self, void* known);
    static int onTimer(CURLM*, long milliseconds, void* self);
    void run();
    void runCommands();
    void removeDropped();
    void act(curl_socket_t socket, int mask);
    void reap();
    [[nodiscard]] int patience() const;

    Descriptor m_poll{epoll_create1(EPOLL_CLOEXEC)};
    Descriptor m_bell{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::unique_ptr<CURLM, MultiCleanup> m_multi{newMulti()};
    std::map<CURL*, std::shared_ptr<LoopTransfer>> m_transfers;
    std::optional<Steady::time_point> m_due;
    std::mutex m_mutex;
    std::vector<Command> m_commands;
    std::atomic<bool> m_hasDropped = false;
    std::atomic<bool> m_ending = false;
    std::thread m_thread;
};

TransferLoop::Implementation::Implementation() {
    curl_multi_setopt(m_multi.get(), CURLMOPT_SOCKETFUNCTION, &Implementation::onSocket);
    curl_multi_setopt(m_multi.get(), CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(m_multi.get(), CURLMOPT_TIMERFUNCTION, &Implementation::onTimer);
    curl_multi_setopt(m_multi.get(), CURLMOPT_TIMERDATA, this);
    epoll_event event{.events = EPOLLIN, .data = {.fd = m_bell.number()}};
    epoll_ctl(m_poll.number(), EPOLL_CTL_ADD, m_bell.number(), &event);
    m_thread = std::thread([this] { run(); });
}

TransferLoop::Implementation::~Implementation() {
    m_ending = true;
    eventfd_write(m_bell.number(), 1);
    m_thread.join();
    for (const auto& [handle, transfer] : m_transfers)
        curl_multi_remove_handle(m_multi.get(), handle);
}

void TransferLoop::Implementation::post(Command command) {
    {
        const std::scoped_lock lock(m_mutex);
        m_commands.push_back(std::move(command));
    }
    eventfd_write(m_bell.number(), 1);
}

void TransferLoop::Implementation::start(std::shared_ptr<LoopTransfer> transfer) {
    CURL* handle = transfer->handle();
    try {
        m_transfers.emplace(handle, transfer);
    } catch (const std::bad_alloc&) {
        return transfer->handleEnd(CURLE_OUT_OF_MEMORY);
    }
    if (curl_multi_add_handle(m_multi.get(), handle) == CURLM_OK) return;
    m_transfers.erase(handle);
    transfer->handleEnd(CURLE_OUT_OF_MEMORY);
}

void TransferLoop::Implementation::drop(LoopTransfer& transfer) noexcept {
    transfer.setDropped();
    m_hasDropped = true;
    eventfd_write(m_bell.number(), 1);
}

void TransferLoop::Implementation::removeDropped() {
    std::erase_if(m_transfers, [this](const auto& entry) {
        if (!entry.second->isDropped()) return false;
        curl_multi_remove_handle(m_multi.get(), entry.first);
        return true;
    });
}

void TransferLoop::Implementation::resume(LoopTransfer& transfer) {
    CURL* handle = transfer.handle();
    if (m_transfers.contains(handle)) curl_easy_pause(handle, CURLPAUSE_CONT);
}

int TransferLoop::Implementation::onSocket(CURL*, curl_socket_t socket, int what, void* self,
                                           void* known) {
    auto& loop = *static_cast<Implementation*>(self);
    if (what == CURL_POLL_REMOVE) {
        epoll_ctl(loop.m_poll.number(), EPOLL_CTL_DEL, socket, nullptr);
        return 0;
    }
    epoll_event event{.events = pollEvents(what), .data = {.fd = socket}};
    epoll_ctl(loop.m_poll.number(), known == nullptr ? EPOLL_CTL_ADD : EPOLL_CTL_MOD, socket,
              &event);
    curl_multi_assign(loop.m_multi.get(), socket, self);
    return 0;
}

int TransferLoop::Implementation::onTimer(CURLM*, long milliseconds, void* self) {
    auto& loop = *static_cast<Implementation*>(self);
    loop.m_due.reset();
    if (milliseconds >= 0) loop.m_due = Steady::now() + std::chrono::milliseconds(milliseconds);
    return 0;
}

int TransferLoop::Implementation::patience() const {
    if (!m_due) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*m_due - Steady::now());
    return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
}

void TransferLoop::Implementation::run() {
    std::array<epoll_event, 64> events{};
    while (!m_ending) {
        const int count = epoll_wait(m_poll.number(), events.data(), events.size(), patience());
        for (int i = 0; i < count; ++i) {
            const epoll_event& event = events.at(static_cast<std::size_t>(i));
            if (event.data.fd == m_bell.number()) {
                eventfd_t rings = 0;
                eventfd_read(m_bell.number(), &rings);
            } else {
                act(event.data.fd, curlEvents(event.events));
            }
        }
        // In this order none is started that was dropped before.
        const bool mayBeDropped = m_hasDropped.exchange(false);
        runCommands();
        if (mayBeDropped) removeDropped();
        if (m_due && Steady::now() >= *m_due) {
            m_due.reset();
            act(CURL_SOCKET_TIMEOUT, 0);
        }
        reap();
    }
}

void TransferLoop::Implementation::runCommands() {
    std::vector<Command> commands;
    {
        const std::scoped_lock lock(m_mutex);
        commands.swap(m_commands);
    }
    for (Command& command : commands)
        command();
}

void TransferLoop::Implementation::act(curl_socket_t socket, int mask) {
    int running = 0;
    curl_multi_socket_action(m_multi.get(), socket, mask, &running);
}

void TransferLoop::Implementation::reap() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(m_multi.get(), &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        CURL* handle = message->easy_handle;
        const CURLcode result = message->data.result;
        curl_multi_remove_handle(m_multi.get(), handle);
        const auto entry = m_transfers.extract(handle);
        if (!entry.empty()) entry.mapped()->handleEnd(result);
    }
}

TransferLoop::TransferLoop() : m_implementation(std::make_unique<Implementation>()) {}

TransferLoop::~TransferLoop() = default;

void TransferLoop::start(std::shared_ptr<LoopTransfer> transfer) {
    m_implementation->post(
        [loop = m_implementation.get(), transfer = std::move(transfer)]() mutable {
            loop->start(std::move(transfer));
        });
}

void TransferLoop::drop(LoopTransfer& transfer) noexcept {
    m_implementation->drop(transfer);
}

void TransferLoop::resume(std::shared_ptr<LoopTransfer> transfer) {
    m_implementation->post([loop = m_implementation.get(), transfer = std::move(transfer)] {
        loop->resume(*transfer);
    });
}

} // namespace vorq::gateway
