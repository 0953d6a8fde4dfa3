#include "platform/linux/x11/copying/X11Pasteboard.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/copying/X11ClipboardOwner.h"
#include "platform/linux/x11/copying/X11ClipboardReading.h"
#include "support/async/Wakeup.h"

#include <array>
#include <deque>
#include <functional>
#include <mutex>
#include <poll.h>
#include <set>
#include <string_view>
#include <sys/eventfd.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {

/// The thread that hands out.
class X11Pasteboard::Serving {
  public:
    using Job = std::function<void(X11ClipboardOwner&)>;

    explicit Serving(const char* selection)
        : m_keepsAtEnd(std::string_view(selection) == clipboard),
          m_owner(
              selection, [this](const Change& change) { note(change); },
              [this](ProcessId process) { noteTaker(process); }),
          m_awake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
        if (m_owner.isUsable())
            m_thread = std::jthread([this](const std::stop_token& stop) { run(stop); });
    }
    Serving(const Serving&) = delete;
    Serving& operator=(const Serving&) = delete;
    ~Serving() {
        if (m_thread.joinable()) {
            m_thread.request_stop();
            ::eventfd_write(m_awake, 1);
            m_thread.join();
        }
        ::close(m_awake);
    }

    [[nodiscard]] bool isUsable() const { return m_thread.joinable(); }

    [[nodiscard]] Change lastChange() const {
        const std::scoped_lock lock(m_mutex);
        return m_change;
    }

    [[nodiscard]] bool wasTakenBy(ProcessId process) const {
        const std::scoped_lock lock(m_mutex);
        return m_takers.contains(process);
    }

    /// Runs the job on the thread.
    void post(Job job) {
        {
            const std::scoped_lock lock(m_mutex);
            m_jobs.push_back(std::move(job));
        }
        ::eventfd_write(m_awake, 1);
    }

  private:
    using Moment = std::chrono::steady_clock::time_point;

    void note(const Change& change) {
        const std::scoped_lock lock(m_mutex);
        m_change = change;
        m_takers.clear();
    }

    void noteTaker(ProcessId process) {
        const std::scoped_lock lock(m_mutex);
        m_takers.insert(process);
    }

    void run(const std::stop_token& stop) {
        while (!stop.stop_requested() && m_owner.isUsable()) {
            runJobs();
            const bool isBusy = m_owner.handleEvents();
            if (!stop.stop_requested()) wait(isBusy ? X11PieceTransfers::patience : endless);
        }
        runJobs();
        if (!m_keepsAtEnd || !m_owner.beginHandover()) return;
        const Moment end = std::chrono::steady_clock::now() + handoverLimit;
        constexpr std::chrono::milliseconds turn{20};
        while (!m_owner.isHandedOver() && std::chrono::steady_clock::now() < end) {
            m_owner.handleEvents();
            wait(turn);
        }
    }

    void runJobs() {
        std::deque<Job> jobs;
        {
            const std::scoped_lock lock(m_mutex);
            jobs.swap(m_jobs);
        }
        for (const Job& job : jobs)
            job(m_owner);
    }

    static constexpr std::chrono::milliseconds endless{-1};

    void wait(std::chrono::milliseconds limit) const {
        std::array<pollfd, 2> watched{pollfd{m_owner.descriptor(), POLLIN, 0},
                                      pollfd{m_awake, POLLIN, 0}};
        ::poll(watched.data(), watched.size(), static_cast<int>(limit.count()));
        eventfd_t ignored = 0;
        ::eventfd_read(m_awake, &ignored);
    }

    bool m_keepsAtEnd;
    mutable std::mutex m_mutex;
    Change m_change;
    std::set<ProcessId> m_takers; // of what was written last
    std::deque<Job> m_jobs;
    X11ClipboardOwner m_owner; // of the thread once that runs
    int m_awake;
    std::jthread m_thread;
};

X11Pasteboard::X11Pasteboard(const char* selection)
    : m_selection(selection), m_serving(std::make_unique<Serving>(selection)) {}
X11Pasteboard::~X11Pasteboard() = default;

PortSupport X11Pasteboard::supported() const {
    if (m_serving->isUsable()) return {};
    return std::unexpected(u"No X server answers."_s);
}

Pasteboard::Change X11Pasteboard::lastChange() const {
    return m_serving->lastChange();
}

bool X11Pasteboard::wasTakenBy(ProcessId process) const {
    return !m_serving->isUsable() || m_serving->wasTakenBy(process);
}

template<typename Ask>
auto X11Pasteboard::read(Reader& reader, Ask ask, std::stop_token stop) {
    auto work = [x11 = reader.x11, selection = m_selection,
                 ask = std::move(ask)](const std::stop_token& running) {
        if (!*x11 || !(*x11)->isUsable()) *x11 = std::make_unique<X11Connection>();
        return ask(X11ClipboardReading(**x11, selection, running));
    };
    return reader.thread.run(std::move(work), std::move(stop));
}

QCoro::Task<Pasteboard::Contents> X11Pasteboard::contents(std::stop_token stop) {
    return read(
        m_whole, [](X11ClipboardReading reading) { return reading.contents(); }, std::move(stop));
}

QCoro::Task<QString> X11Pasteboard::text(std::stop_token stop) {
    return read(
        m_whole, [](X11ClipboardReading reading) { return reading.text(); }, std::move(stop));
}

QCoro::Task<std::optional<QList<QByteArray>>> X11Pasteboard::formNames(std::stop_token stop) {
    return read(
        m_single, [](X11ClipboardReading reading) { return reading.formNames(); }, std::move(stop));
}

QCoro::Task<std::optional<QByteArray>> X11Pasteboard::form(QByteArray name, std::stop_token stop) {
    return read(
        m_single,
        [name = std::move(name)](X11ClipboardReading reading) { return reading.form(name); },
        std::move(stop));
}

QCoro::Task<std::optional<std::uint64_t>> X11Pasteboard::write(PasteboardContents contents,
                                                               std::uint64_t over) {
    const auto result = std::make_shared<std::optional<std::uint64_t>>();
    if (!m_serving->isUsable()) co_return *result;
    const Wakeup done;
    m_serving->post([result, done, over, written = std::move(contents)](X11ClipboardOwner& owner) {
        *result = owner.write(written, over);
        done.fireFromAnyThread();
    });
    co_await done;
    co_return *result;
}

} // namespace vorq
