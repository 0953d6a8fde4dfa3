#pragma once

#include <curl/curl.h>

#include <atomic>
#include <memory>

namespace vorq::gateway {

/// A transfer that a loop carries out. All but the constructor and the destructor runs on the
/// loop's thread, and so do the callbacks that libcurl makes for its handle.
class LoopTransfer {
  public:
    virtual ~LoopTransfer() = default;
    [[nodiscard]] virtual CURL* handle() = 0;
    /// The transfer is over and has been removed. Throws nothing.
    virtual void handleEnd(CURLcode result) = 0;

    /// Nobody wants the transfer any more. Any thread.
    void setDropped() { m_isDropped = true; }
    [[nodiscard]] bool isDropped() const { return m_isDropped; }

  private:
    std::atomic<bool> m_isDropped = false;
};

/// Carries out any number of transfers on one thread of its own, over connections that they use one
/// after the other.
/// Its functions may be called from any thread and do not wait.
class TransferLoop {
  public:
    TransferLoop();
    /// Drops all transfers.
    ~TransferLoop();
    TransferLoop(const TransferLoop&) = delete;
    TransferLoop& operator=(const TransferLoop&) = delete;

    void start(std::shared_ptr<LoopTransfer> transfer);
    /// Drops the transfer's connection unless it is over. Needs no memory.
    void drop(LoopTransfer& transfer) noexcept;
    /// Lets a transfer go on whose callback said CURL_WRITEFUNC_PAUSE.
    void resume(std::shared_ptr<LoopTransfer> transfer);

  private:
    class Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace vorq::gateway
