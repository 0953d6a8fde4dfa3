#pragma once

#include "platform/copying/Pasteboard.h"
#include "platform/linux/x11/X11Connection.h"
#include "support/async/BlockingThread.h"

#include <memory>

namespace vorq {

class X11ClipboardReading;

/// A selection of an X server, on connections of its own: the CLIPBOARD, or PRIMARY. What it writes
/// it hands out on a thread of its own, however busy the program is. A clipboard manager is asked
/// to keep what is on the CLIPBOARD when it goes.
class X11Pasteboard final : public Pasteboard {
  public:
    static constexpr const char* clipboard = "CLIPBOARD";
    static constexpr const char* primary = "PRIMARY";

    explicit X11Pasteboard(const char* selection = clipboard);
    /// Waits for a clipboard manager, at most so long.
    ~X11Pasteboard() override;
    static constexpr std::chrono::milliseconds handoverLimit{1000};

    [[nodiscard]] PortSupport supported() const override;
    [[nodiscard]] Change lastChange() const override;
    QCoro::Task<Contents> contents(std::stop_token stop) override;
    QCoro::Task<QString> text(std::stop_token stop) override;
    QCoro::Task<std::optional<QList<QByteArray>>> formNames(std::stop_token stop) override;
    QCoro::Task<std::optional<QByteArray>> form(QByteArray name, std::stop_token stop) override;
    [[nodiscard]] bool wasTakenBy(ProcessId process) const override;
    QCoro::Task<std::optional<std::uint64_t>> write(PasteboardContents contents,
                                                    std::uint64_t over) override;

  private:
    class Serving;

    // A thread that reads on a connection of its own.
    struct Reader {
        std::shared_ptr<std::unique_ptr<X11Connection>> x11 =
            std::make_shared<std::unique_ptr<X11Connection>>();
        BlockingThread thread{BlockingThread::AtEnd::Stop};
    };

    template<typename Ask>
    auto read(Reader& reader, Ask ask, std::stop_token stop);

    const char* m_selection;
    std::unique_ptr<Serving> m_serving;
    Reader m_whole;
    // What is read form by form may wait for longer, and nothing else with it.
    Reader m_single;
};

} // namespace vorq
