#pragma once

#include "platform/PortSupport.h"
#include "platform/ProcessId.h"
#include "platform/WindowId.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <stop_token>

namespace vorq {

/// The text that was highlighted last anywhere in the session, which its application hands out
/// without being asked by the user. It says what was selected, not that it still is.
class PrimarySelection {
  public:
    /// One act of highlighting: two with the same value are the same one.
    struct Ownership {
        WindowId window = 0;
        std::uint64_t timestamp = 0;

        bool operator==(const Ownership&) const = default;
    };

    struct Highlight {
        /// As it was handed out, untrimmed.
        QString text;
        Ownership ownership;
        /// Whether the user clicked into the window since, which makes most programs deselect, but
        /// not all of them take the highlight back.
        bool mayBeUndone = false;

        bool operator==(const Highlight&) const = default;
    };

    PrimarySelection() = default;
    PrimarySelection(const PrimarySelection&) = delete;
    PrimarySelection& operator=(const PrimarySelection&) = delete;
    virtual ~PrimarySelection() = default;

    /// Whether all applications hand out what is highlighted, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// What the process highlighted; nothing if another one did so later, if it is of another
    /// window than the one that the process had in front last, if it is not text, or is too long.
    /// Blocks until it is read, at most until the token is stopped; for one thread at a time, not
    /// the main one.
    [[nodiscard]] virtual std::optional<Highlight> highlightOf(ProcessId process,
                                                               std::stop_token stop) = 0;
};

/// Nothing is handed out.
class NoPrimarySelection final : public PrimarySelection {
  public:
    [[nodiscard]] PortSupport supported() const override {
        return std::unexpected(
            QStringLiteral("There is no desktop that hands out what is highlighted."));
    }
    [[nodiscard]] std::optional<Highlight> highlightOf(ProcessId /*process*/,
                                                       std::stop_token /*stop*/) override {
        return std::nullopt;
    }
};

} // namespace vorq
