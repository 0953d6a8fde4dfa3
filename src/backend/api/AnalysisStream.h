#pragma once

#include "backend/api/AIAnalysis.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <stop_token>

namespace vorq {

struct StreamChunk;
class StreamChunkDecoder;

/// Reads a reply that arrives as server-sent events, fed with network reads of any size.
///
/// Lines end at a line feed, a carriage return, or both. A line that is no readable event is
/// skipped. Work and memory are linear in the longest line, however it is cut.
class AnalysisStream {
  public:
    /// Called with the whole reply so far, in order.
    using OnDelta = std::function<void(const QString& text)>;

    /// A line of more bytes than this is skipped.
    static constexpr qsizetype longestLine = qsizetype{32} << 20;

    /// The stop token is looked at before each line.
    explicit AnalysisStream(OnDelta onDelta, std::stop_token stop = {});
    ~AnalysisStream();
    AnalysisStream(const AnalysisStream&) = delete;
    AnalysisStream& operator=(const AnalysisStream&) = delete;

    /// Takes the next bytes of the body. True once the reply is complete; what follows is ignored.
    /// Throws ServiceError if the backend gave up, and OperationCancelled.
    bool feed(QByteArrayView bytes);

    /// The reply, once feed() gave true or the body has ended. Throws like feed(), and also if the
    /// body ended before there was any text.
    AIAnalysis finish();

  private:
    void append(QByteArrayView bytes);
    void dropTakenLines();
    void takeLine(QByteArrayView line);
    void takeChunk(StreamChunk& chunk);

    OnDelta m_onDelta;
    std::stop_token m_stop;
    std::unique_ptr<StreamChunkDecoder> m_decoder;
    QByteArray m_buffer;
    qsizetype m_lineStart = 0;
    qsizetype m_scanned = 0;
    bool m_skippingLine = false;
    QString m_latest;
    std::optional<AIAnalysis> m_complete;
};

} // namespace vorq
