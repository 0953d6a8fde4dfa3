#pragma once

#include "capture/selection/AccessibleSelection.h"
#include "writing/words/WordLooker.h"

namespace vorq {

class CaptureGate;
class Screens;
class SelectionReader;

/// Where words are by accessibility, in its coordinates. Those count that are on one line and
/// wholly within their element and its window. Blocks; see Accessibility for the thread.
[[nodiscard]] WordLooker::Frames framesOfWords(const CaptureSource& from,
                                               const WordsSought& sought);

/// Looks only while no capture of the user's needs the thread. Main thread only.
class AccessibleWordLooker final : public WordLooker {
  public:
    static constexpr std::chrono::milliseconds readLimit{400};

    struct Services {
        SelectionReader& reader;
        const CaptureGate& gate;
        const Screens& screens;
    };

    /// The services must outlive this object and what it has under way.
    explicit AccessibleWordLooker(const Services& services) : m_services(services) {}

    QCoro::Task<std::optional<Frames>> look(WordsSought sought, std::stop_token stop) override;

  private:
    Services m_services;
};

} // namespace vorq
