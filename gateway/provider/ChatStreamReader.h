#pragma once

#include "engine/Analysis.h"

#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// Puts the reply together from the bytes of a provider's answer: server-sent events, or one JSON
/// document from a provider that does not stream. Throws EngineError for what is no reply.
class ChatStreamReader {
  public:
    /// Takes bytes cut anywhere.
    void feed(std::string_view bytes);
    /// The answer ended. Throws if the reply is not complete.
    void finish();

    [[nodiscard]] bool isDone() const { return done_; }
    /// Whether the model has begun to write, or to think where nobody sees it.
    [[nodiscard]] bool hasBegun() const { return begun_; }
    /// The reply so far, without a model's thinking aloud in front of it.
    [[nodiscard]] std::string_view text() const;
    [[nodiscard]] const std::vector<Source>& sources() const { return sources_; }

  private:
    void line(std::string_view line);
    void payload(std::string_view json);

    std::string pending_;
    std::string text_;
    std::vector<Source> sources_;
    bool isEventStream_ = false;
    bool begun_ = false;
    bool done_ = false;
    bool sawFinish_ = false;
};

} // namespace vorq::gateway
