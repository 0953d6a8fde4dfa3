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
    explicit Descriptor(int number) : number_(number) {
        if (number_ < 0) throw std::system_error(errno, std::generic_category());
    }
    ~Descriptor() { close(number_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int number() const { return number_; }

  private:
    int number_;
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

    Descriptor poll_{epoll_create1(EPOLL_CLOEXEC)};
    Descriptor bell_{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::unique_ptr<CURLM, MultiCleanup> multi_{newMulti()};
    std::map<CURL*, std::shared_ptr<LoopTransfer>> transfers_;
    std::optional<Steady::time_point> due_;
    std::mutex mutex_;
    std::vector<Command> commands_;
    std::atomic<bool> hasDropped_ = false;
    std::atomic<bool> ending_ = false;
    std::thread thread_;
};

TransferLoop::Implementation::Implementation() {
    curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETFUNCTION, &Implementation::onSocket);
    curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(multi_.get(), CURLMOPT_TIMERFUNCTION, &Implementation::onTimer);
    curl_multi_setopt(multi_.get(), CURLMOPT_TIMERDATA, this);
    epoll_event event{.events = EPOLLIN, .data = {.fd = bell_.number()}};
    epoll_ctl(poll_.number(), EPOLL_CTL_ADD, bell_.number(), &event);
    thread_ = std::thread([this] { run(); });
}

TransferLoop::Implementation::~Implementation() {
    ending_ = true;
    eventfd_write(bell_.number(), 1);
    thread_.join();
    for (const auto& [handle, transfer] : transfers_)
        curl_multi_remove_handle(multi_.get(), handle);
}

void TransferLoop::Implementation::post(Command command) {
    {
        const std::scoped_lock lock(mutex_);
        commands_.push_back(std::move(command));
    }
    eventfd_write(bell_.number(), 1);
}

void TransferLoop::Implementation::start(std::shared_ptr<LoopTransfer> transfer) {
    CURL* handle = transfer->handle();
    try {
        transfers_.emplace(handle, transfer);
    } catch (const std::bad_alloc&) {
        return transfer->handleEnd(CURLE_OUT_OF_MEMORY);
    }
    if (curl_multi_add_handle(multi_.get(), handle) == CURLM_OK) return;
    transfers_.erase(handle);
    transfer->handleEnd(CURLE_OUT_OF_MEMORY);
}

void TransferLoop::Implementation::drop(LoopTransfer& transfer) noexcept {
    transfer.setDropped();
    hasDropped_ = true;
    eventfd_write(bell_.number(), 1);
}

void TransferLoop::Implementation::removeDropped() {
    std::erase_if(transfers_, [this](const auto& entry) {
        if (!entry.second->isDropped()) return false;
        curl_multi_remove_handle(multi_.get(), entry.first);
        return true;
    });
}

void TransferLoop::Implementation::resume(LoopTransfer& transfer) {
    CURL* handle = transfer.handle();
    if (transfers_.contains(handle)) curl_easy_pause(handle, CURLPAUSE_CONT);
}

int TransferLoop::Implementation::onSocket(CURL*, curl_socket_t socket, int what, void* self,
                                           void* known) {
    auto& loop = *static_cast<Implementation*>(self);
    if (what == CURL_POLL_REMOVE) {
        epoll_ctl(loop.poll_.number(), EPOLL_CTL_DEL, socket, nullptr);
        return 0;
    }
    epoll_event event{.events = pollEvents(what), .data = {.fd = socket}};
    epoll_ctl(loop.poll_.number(), known == nullptr ? EPOLL_CTL_ADD : EPOLL_CTL_MOD, socket,
              &event);
    curl_multi_assign(loop.multi_.get(), socket, self);
    return 0;
}

int TransferLoop::Implementation::onTimer(CURLM*, long milliseconds, void* self) {
    auto& loop = *static_cast<Implementation*>(self);
    loop.due_.reset();
    if (milliseconds >= 0) loop.due_ = Steady::now() + std::chrono::milliseconds(milliseconds);
    return 0;
}

int TransferLoop::Implementation::patience() const {
    if (!due_) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*due_ - Steady::now());
    return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
}

void TransferLoop::Implementation::run() {
    std::array<epoll_event, 64> events{};
    while (!ending_) {
        const int count = epoll_wait(poll_.number(), events.data(), events.size(), patience());
        for (int i = 0; i < count; ++i) {
            const epoll_event& event = events.at(static_cast<std::size_t>(i));
            if (event.data.fd == bell_.number()) {
                eventfd_t rings = 0;
                eventfd_read(bell_.number(), &rings);
            } else {
                act(event.data.fd, curlEvents(event.events));
            }
        }
        // In this order none is started that was dropped before.
        const bool mayBeDropped = hasDropped_.exchange(false);
        runCommands();
        if (mayBeDropped) removeDropped();
        if (due_ && Steady::now() >= *due_) {
            due_.reset();
            act(CURL_SOCKET_TIMEOUT, 0);
        }
        reap();
    }
}

void TransferLoop::Implementation::runCommands() {
    std::vector<Command> commands;
    {
        const std::scoped_lock lock(mutex_);
        commands.swap(commands_);
    }
    for (Command& command : commands)
        command();
}

void TransferLoop::Implementation::act(curl_socket_t socket, int mask) {
    int running = 0;
    curl_multi_socket_action(multi_.get(), socket, mask, &running);
}

void TransferLoop::Implementation::reap() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        CURL* handle = message->easy_handle;
        const CURLcode result = message->data.result;
        curl_multi_remove_handle(multi_.get(), handle);
        const auto entry = transfers_.extract(handle);
        if (!entry.empty()) entry.mapped()->handleEnd(result);
    }
}

TransferLoop::TransferLoop() : implementation_(std::make_unique<Implementation>()) {}

TransferLoop::~TransferLoop() = default;

void TransferLoop::start(std::shared_ptr<LoopTransfer> transfer) {
    implementation_->post([loop = implementation_.get(), transfer = std::move(transfer)]() mutable {
        loop->start(std::move(transfer));
    });
}

void TransferLoop::drop(LoopTransfer& transfer) noexcept {
    implementation_->drop(transfer);
}

void TransferLoop::resume(std::shared_ptr<LoopTransfer> transfer) {
    implementation_->post([loop = implementation_.get(), transfer = std::move(transfer)] {
        loop->resume(*transfer);
    });
}

} // namespace vorq::gateway
