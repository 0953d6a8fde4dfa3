#pragma once

#include "writing/WritingToolsInteraction.h"

#include <QString>

#include <vector>

namespace vorq {

/// What happened in a writing session, the latest only. The model is told of it with every request,
/// so that it knows what was asked and rejected so far.
class WritingSessionLog {
  public:
    static constexpr std::size_t mostInteractions = 24;
    static constexpr std::size_t mostLines = 12;

    void record(const QDateTime& at, const WritingToolsInteraction::Kind& kind);

    /// Oldest first.
    [[nodiscard]] const std::vector<WritingToolsInteraction>& interactions() const {
        return m_interactions;
    }

    /// The last of them as lines of a prompt; "" if nothing happened.
    [[nodiscard]] QString contextBlock() const;

  private:
    std::vector<WritingToolsInteraction> m_interactions;
};

} // namespace vorq
