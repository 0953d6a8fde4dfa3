#pragma once

#include "provider/ChatChunk.h"
#include "provider/EventStreamParser.h"

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
    /// The answer ended. Throws if the reply is not complete, or not one to show.
    void finish();

    /// Nothing more is to come.
    [[nodiscard]] bool isDone() const { return m_done; }
    /// Whether the model has begun to write, or to think where nobody sees it.
    [[nodiscard]] bool hasBegun() const { return m_hasThought || !m_text.empty(); }
    /// Whether the model has said that it is at its end; sources may still follow.
    [[nodiscard]] bool hasFinished() const { return m_finish != FinishReason::None; }
    /// Whether the reply ends where the model's limit was.
    [[nodiscard]] bool isCutShort() const { return m_finish == FinishReason::Length; }
    /// The reply so far, without a model's thinking aloud in front of it.
    [[nodiscard]] std::string_view text() const;
    [[nodiscard]] const std::vector<Source>& sources() const { return m_sources; }

  private:
    enum class Form { Unknown, Events, Document };

    void recognizeForm();
    void handleEvents(const std::vector<StreamEvent>& events);
    void handlePayload(std::string_view text);
    void handleChunk(ChatChunk chunk);
    void finishDocument();
    void finishEvents();
    void requireReply() const;

    Form m_form = Form::Unknown;
    EventStreamParser m_events;
    /// What came before the form was known; then the document, if it is one.
    std::string m_document;
    std::string m_text;
    std::string m_refusal;
    std::vector<Source> m_sources;
    FinishReason m_finish = FinishReason::None;
    bool m_hasDelta = false;
    bool m_hasThought = false;
    bool m_done = false;
};

} // namespace vorq::gateway
