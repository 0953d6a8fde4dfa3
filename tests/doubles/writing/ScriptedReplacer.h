#pragma once

#include "support/async/Wakeup.h"
#include "writing/SelectionReplacer.h"

#include <functional>
#include <vector>

namespace vorq {

/// Replacements that a test ends by hand, or that end at once.
class ScriptedReplacer final : public SelectionReplacer {
  public:
    struct Asked {
        QString replacement;
        Target target;
    };

    Outcome outcome = Outcome::Replaced;
    /// While set, a replacement ends by finish() only.
    bool waits = false;
    std::vector<Asked> asked;
    /// Called when one lands.
    std::function<void(const QString& replacement, const Target& target)> onReplaced;

    void finish() {
        for (const Wakeup& wakeup : std::exchange(m_waiting, {}))
            wakeup.fire();
    }
    [[nodiscard]] std::size_t waiting() const { return m_waiting.size(); }

    QCoro::Task<Outcome> replaceSelectedText(QString replacement, Target target,
                                             std::stop_token) override {
        asked.push_back({replacement, target});
        co_await pause();
        const Outcome given = outcome;
        if (given == Outcome::Replaced && onReplaced) onReplaced(replacement, target);
        co_return given;
    }

  private:
    QCoro::Task<> pause() {
        if (!waits) co_return;
        const Wakeup wakeup;
        m_waiting.push_back(wakeup);
        co_await wakeup;
    }

    std::vector<Wakeup> m_waiting;
};

} // namespace vorq
