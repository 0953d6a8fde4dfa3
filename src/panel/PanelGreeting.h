#pragma once

namespace vorq {

class PanelTranscript;

/// The greeting of an empty conversation, typed character by character. Main thread only.
class PanelGreeting {
  public:
    /// The transcript must outlive it.
    explicit PanelGreeting(PanelTranscript& transcript) : m_transcript(transcript) {}

    /// Types it if nothing stands in the conversation.
    void ensure();

    /// Whether it is all that stands there, however far it is typed.
    [[nodiscard]] bool isAlone() const;

  private:
    PanelTranscript& m_transcript;
};

} // namespace vorq
