#pragma once

#include "platform/Accessibility.h"
#include "platform/PortSupport.h"
#include "platform/ProcessId.h"

#include <QCoroTask>
#include <QString>

#include <cstdint>
#include <expected>
#include <optional>
#include <stop_token>

namespace vorq {

/// A small window of a process of its own that holds a text, so that Vorq can try out on it what it
/// does with other applications. Main thread only; nothing waits.
class TestWindow {
  public:
    /// Whether what is highlighted is handed out to all programs, in the place of what was.
    enum class HandsOut : std::uint8_t { Yes, No };

    /// The error is a sentence for the log.
    using Opened = std::expected<ProcessId, QString>;

    TestWindow() = default;
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    virtual ~TestWindow() = default;

    /// Whether windows can be opened in this session, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Opens it with the text, all of which is highlighted, and gives its process once it is on the
    /// screen. One at a time.
    virtual QCoro::Task<Opened> open(QString text, HandsOut handsOut, std::stop_token stop) = 0;

    /// Highlights a stretch of the text, which is not handed out.
    virtual void highlight(TextRange range) = 0;

    /// What it holds now; nothing if it is gone, or does not answer before the token is stopped.
    virtual QCoro::Task<std::optional<QString>> text(std::stop_token stop) = 0;

    /// Ends it, however it is.
    virtual void close() = 0;
};

/// No window opens.
class NoTestWindow final : public TestWindow {
  public:
    [[nodiscard]] PortSupport supported() const override {
        return std::unexpected(QStringLiteral("There is no desktop that shows windows."));
    }
    QCoro::Task<Opened> open(QString, HandsOut, std::stop_token) override {
        const Opened none = std::unexpected(supported().error());
        co_return none;
    }
    void highlight(TextRange) override {}
    QCoro::Task<std::optional<QString>> text(std::stop_token) override { co_return std::nullopt; }
    void close() override {}
};

} // namespace vorq
