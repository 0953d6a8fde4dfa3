#pragma once

#include "platform/copying/Pasteboard.h"

#include <functional>
#include <vector>

namespace vorq {

/// A clipboard in memory.
class ScriptedPasteboard final : public Pasteboard {
  public:
    PasteboardContents held;
    /// What is told instead of the contents, for an owner that does not give them.
    std::optional<QString> refusal;
    /// While set, a read comes only when its token is stopped, and is then refused.
    bool hangs = false;
    /// The same of the form of this name alone.
    QByteArray hangingForm;
    /// Whether anyone was given what Vorq wrote.
    bool isTaken = true;
    PortSupport support;
    /// Everything that was written by Vorq, in order.
    std::vector<PasteboardContents> written;
    /// Runs right before a write looks who wrote last.
    std::function<void()> onWrite;

    /// Another program writes.
    void writeAs(std::optional<ProcessId> writer, PasteboardContents contents) {
        held = std::move(contents);
        m_change = {.count = m_change.count + 1, .writer = writer};
    }

    [[nodiscard]] PortSupport supported() const override { return support; }
    [[nodiscard]] Change lastChange() const override { return m_change; }
    QCoro::Task<Contents> contents(std::stop_token stop) override;
    QCoro::Task<QString> text(std::stop_token stop) override;
    QCoro::Task<std::optional<QList<QByteArray>>> formNames(std::stop_token stop) override;
    QCoro::Task<std::optional<QByteArray>> form(QByteArray name, std::stop_token stop) override;
    [[nodiscard]] bool wasTakenBy(ProcessId) const override { return isTaken; }
    QCoro::Task<std::optional<std::uint64_t>> write(PasteboardContents contents,
                                                    std::uint64_t over) override;

  private:
    Change m_change{.count = 1, .writer = std::nullopt};
};

} // namespace vorq
