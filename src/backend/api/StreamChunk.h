#pragma once

#include "backend/api/AnalysisJson.h"

#include <QByteArrayView>

namespace vorq {

/// One event of a streamed reply.
struct StreamChunk {
    std::optional<QString> text;
    std::optional<bool> done;
    std::optional<QString> error;
    std::optional<QString> summary;
    std::optional<QString> feedback;
    std::optional<QString> corrections;
    std::optional<std::vector<AISource>> sources;
    std::optional<VorqFollowUp> followUp;
};

/// Decodes one event after the other with the same memory.
class StreamChunkDecoder {
  public:
    /// Readable bytes that must follow a payload.
    static constexpr qsizetype padding = simdjson::SIMDJSON_PADDING;

    /// Nothing for what is not an event. Bytes that are not UTF-8 count as U+FFFD.
    [[nodiscard]] std::optional<StreamChunk> decode(QByteArrayView paddedPayload);

  private:
    simdjson::dom::parser m_parser;
};

} // namespace vorq
