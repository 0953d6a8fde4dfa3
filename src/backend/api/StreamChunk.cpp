#include "backend/api/StreamChunk.h"

#include <QStringDecoder>

namespace vorq {
namespace {

// The memory for a longer payload is given back after it.
constexpr qsizetype longKeptPayload = qsizetype{1} << 20;

bool read(strict_json::Element element, StreamChunk& chunk) {
    using strict_json::readIfPresent;
    strict_json::Object object;
    return element.get(object) == simdjson::SUCCESS && readIfPresent(object, "text", chunk.text) &&
           readIfPresent(object, "done", chunk.done) &&
           readIfPresent(object, "error", chunk.error) &&
           readIfPresent(object, "summary", chunk.summary) &&
           readIfPresent(object, "feedback", chunk.feedback) &&
           readIfPresent(object, "corrections", chunk.corrections) &&
           readIfPresent(object, "sources", chunk.sources) &&
           readIfPresent(object, "followUp", chunk.followUp);
}

QByteArray repaired(QByteArrayView bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder(bytes);
    return text.toUtf8();
}

} // namespace

std::optional<StreamChunk> StreamChunkDecoder::decode(QByteArrayView paddedPayload) {
    const auto parse = [this](QByteArrayView bytes, bool copy, strict_json::Element& root) {
        return m_parser.parse(bytes.data(), static_cast<std::size_t>(bytes.size()), copy).get(root);
    };
    strict_json::Element root;
    simdjson::error_code error = parse(paddedPayload, false, root);
    if (error == simdjson::UTF8_ERROR) error = parse(repaired(paddedPayload), true, root);
    std::optional<StreamChunk> chunk;
    if (error == simdjson::SUCCESS && !read(root, chunk.emplace())) chunk.reset();
    if (paddedPayload.size() > longKeptPayload) m_parser = simdjson::dom::parser();
    return chunk;
}

} // namespace vorq
