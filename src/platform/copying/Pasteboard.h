#pragma once

#include "platform/PortSupport.h"
#include "platform/ProcessId.h"

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QString>

#include <cstdint>
#include <expected>
#include <optional>
#include <stop_token>
#include <vector>

namespace vorq {

/// One form of what the clipboard holds, byte by byte as its owner hands it out.
struct PasteboardForm {
    /// What it is asked for by, as "text/html".
    QByteArray name;
    QByteArray bytes;
    /// What the owner says that the bytes are; mostly the name again.
    QByteArray type;
    /// The size of the units that the bytes are made of: 8, 16 or 32 bits.
    std::uint8_t unit = 8;

    bool operator==(const PasteboardForm&) const = default;
};

/// All forms, in the order of their owner; none if the clipboard is empty.
using PasteboardContents = std::vector<PasteboardForm>;

/// The clipboard of the user's session. Main thread only; whatever waits for another program does
/// so elsewhere.
class Pasteboard {
  public:
    /// The most that contents may be, all forms together. More is not read.
    static constexpr qsizetype mostBytes = qsizetype{64} * 1024 * 1024;
    static constexpr std::size_t mostForms = 512;
    /// The most bytes of a text.
    static constexpr qsizetype longestText = qsizetype{4} * 1024 * 1024;

    /// The last time that anyone wrote.
    struct Change {
        /// Grows with each write.
        std::uint64_t count = 0;
        /// Who wrote; nothing if the clipboard was emptied, or that is not known.
        std::optional<ProcessId> writer;

        bool operator==(const Change&) const = default;
    };

    /// The error is a sentence for the log that says why they cannot be had whole.
    using Contents = std::expected<PasteboardContents, QString>;

    Pasteboard() = default;
    Pasteboard(const Pasteboard&) = delete;
    Pasteboard& operator=(const Pasteboard&) = delete;
    virtual ~Pasteboard() = default;

    /// Whether there is a clipboard that can be read and written, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Never waits.
    [[nodiscard]] virtual Change lastChange() const = 0;

    /// All that it holds. An error if its owner does not hand out all in time, which is until the
    /// token is stopped, if it is too much, or if it is marked as a secret. A form that the owner
    /// refuses is left out.
    virtual QCoro::Task<Contents> contents(std::stop_token stop) = 0;

    /// The text that it holds; "" if there is none before the token is stopped, it is too long, or
    /// it is marked as a secret.
    virtual QCoro::Task<QString> text(std::stop_token stop) = 0;

    /// The names of the forms that it is offered in, in the order of their owner; none if it is
    /// empty. Nothing if the owner does not tell before the token is stopped.
    virtual QCoro::Task<std::optional<QList<QByteArray>>> formNames(std::stop_token stop) = 0;

    /// What it holds in a form; nothing if its owner does not hand that out before the token is
    /// stopped, or it has more than `mostBytes`.
    virtual QCoro::Task<std::optional<QByteArray>> form(QByteArray name, std::stop_token stop) = 0;

    /// Whether the process was given any form of what was last written here. True where that cannot
    /// be known. Never waits.
    [[nodiscard]] virtual bool wasTakenBy(ProcessId process) const = 0;

    /// Replaces what it holds, unless anyone has written since the change of that count. Gives the
    /// count of this write, nothing if it was not done. The contents are handed out from then on,
    /// whoever gave them is gone or not.
    virtual QCoro::Task<std::optional<std::uint64_t>> write(PasteboardContents contents,
                                                            std::uint64_t over) = 0;
};

/// No clipboard.
class NoPasteboard final : public Pasteboard {
  public:
    explicit NoPasteboard(
        QString reason = QStringLiteral("There is no desktop that has a clipboard."))
        : m_reason(std::move(reason)) {}

    [[nodiscard]] PortSupport supported() const override { return std::unexpected(m_reason); }
    [[nodiscard]] Change lastChange() const override { return {}; }
    QCoro::Task<Contents> contents(std::stop_token) override {
        const Contents none = std::unexpected(m_reason);
        co_return none;
    }
    QCoro::Task<QString> text(std::stop_token) override { co_return QString(); }
    QCoro::Task<std::optional<QList<QByteArray>>> formNames(std::stop_token) override {
        co_return std::nullopt;
    }
    QCoro::Task<std::optional<QByteArray>> form(QByteArray, std::stop_token) override {
        co_return std::nullopt;
    }
    [[nodiscard]] bool wasTakenBy(ProcessId) const override { return true; }
    QCoro::Task<std::optional<std::uint64_t>> write(PasteboardContents, std::uint64_t) override {
        co_return std::nullopt;
    }

  private:
    QString m_reason;
};

/// A text as programs look for it.
[[nodiscard]] PasteboardContents pasteboardText(const QString& text);

} // namespace vorq
