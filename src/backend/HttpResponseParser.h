#pragma once

#include <QByteArray>

#include <optional>

namespace vorq {

/// Takes an HTTP/1 response apart as it arrives, in pieces of any size. Keeps no more of it than
/// its head. Interim responses are passed over. Functions throw TransferError for what is no
/// response.
class HttpResponseParser {
  public:
    /// Takes the next bytes of the connection and gives the bytes of the body among them.
    QByteArray feed(QByteArrayView bytes);

    /// The connection has ended.
    void end();

    /// The status, once the head is there.
    [[nodiscard]] std::optional<int> status() const { return m_status; }

    [[nodiscard]] bool isComplete() const { return m_state == State::Complete; }

  private:
    enum class State {
        StatusLine,
        Headers,
        Body,       // as many bytes as m_left
        UntilClose, // all bytes of the connection
        ChunkSize,
        ChunkData,
        ChunkEnd,
        Trailers,
        Complete,
    };

    void takeLine(const QByteArray& line);
    void takeStatusLine(const QByteArray& line);
    void takeHeader(const QByteArray& line);
    void takeChunkSize(const QByteArray& line);
    void endHead();
    [[nodiscard]] bool isReadingLines() const;

    State m_state = State::StatusLine;
    int m_parsedStatus = 0;
    std::optional<int> m_status;
    std::optional<qint64> m_contentLength;
    bool m_chunked = false;
    qint64 m_left = 0;
    qsizetype m_lineBytes = 0; // of all lines since the last data, so that a head has a limit
    QByteArray m_line;
};

} // namespace vorq
