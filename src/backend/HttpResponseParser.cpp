#include "backend/HttpResponseParser.h"

#include "backend/Errors.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype longestHead = 256 << 10;

[[noreturn]] void refuse() {
    throw TransferError(u"The server sent a response that is not valid."_s);
}

bool isDigits(QByteArrayView text) {
    return !text.isEmpty() && text.size() <= 18 &&
           std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

QByteArray HttpResponseParser::feed(QByteArrayView bytes) {
    QByteArray body;
    while (!bytes.isEmpty() && !isComplete()) {
        if (isReadingLines()) {
            const qsizetype end = bytes.indexOf('\n');
            const qsizetype length = end < 0 ? bytes.size() : end + 1;
            m_lineBytes += length;
            if (m_lineBytes > longestHead) refuse();
            m_line += bytes.first(length);
            bytes = bytes.sliced(length);
            if (end >= 0) takeLine(std::exchange(m_line, {}));
            continue;
        }
        m_lineBytes = 0;
        const qsizetype length =
            m_state == State::UntilClose
                ? bytes.size()
                : static_cast<qsizetype>(std::min<qint64>(m_left, bytes.size()));
        body += bytes.first(length);
        bytes = bytes.sliced(length);
        m_left -= length;
        if (m_left == 0 && m_state == State::Body) m_state = State::Complete;
        if (m_left == 0 && m_state == State::ChunkData) m_state = State::ChunkEnd;
    }
    return body;
}

void HttpResponseParser::end() {
    if (m_state == State::UntilClose) m_state = State::Complete;
    if (!isComplete()) throw TransferError(u"The server closed the connection too early."_s);
}

bool HttpResponseParser::isReadingLines() const {
    return m_state != State::Body && m_state != State::ChunkData && m_state != State::UntilClose;
}

void HttpResponseParser::takeLine(const QByteArray& ended) {
    const QByteArray line = ended.chopped(ended.endsWith("\r\n") ? 2 : 1);
    switch (m_state) {
    case State::StatusLine:
        return takeStatusLine(line);
    case State::Headers:
        return line.isEmpty() ? endHead() : takeHeader(line);
    case State::ChunkSize:
        return takeChunkSize(line);
    case State::ChunkEnd:
        if (!line.isEmpty()) refuse();
        m_state = State::ChunkSize;
        return;
    case State::Trailers:
        if (line.isEmpty()) m_state = State::Complete;
        return;
    default:
        return;
    }
}

void HttpResponseParser::takeStatusLine(const QByteArray& line) {
    // "HTTP/1.x" and three digits; the reason may be missing.
    if (!line.startsWith("HTTP/1.") || line.size() < 12 || line[8] != ' ' ||
        !isDigits(QByteArrayView(line).sliced(9, 3)) || (line.size() > 12 && line[12] != ' '))
        refuse();
    m_parsedStatus = line.sliced(9, 3).toInt();
    m_contentLength.reset();
    m_chunked = false;
    m_state = State::Headers;
}

void HttpResponseParser::takeHeader(const QByteArray& line) {
    const qsizetype colon = line.indexOf(':');
    if (colon <= 0) return;
    const QByteArray name = line.first(colon).toLower();
    const QByteArray value = line.sliced(colon + 1).trimmed().toLower();
    if (name == "content-length") {
        if (!isDigits(value)) refuse();
        const qint64 length = value.toLongLong();
        if (m_contentLength.value_or(length) != length) refuse();
        m_contentLength = length;
    } else if (name == "transfer-encoding" && value != "identity") {
        if (value != "chunked" || m_chunked) refuse();
        m_chunked = true;
    }
}

void HttpResponseParser::endHead() {
    if (m_parsedStatus < 200) {
        if (m_parsedStatus == 101) refuse();
        m_state = State::StatusLine;
        return;
    }
    m_status = m_parsedStatus;
    m_left = m_contentLength.value_or(0);
    if (m_parsedStatus == 204 || m_parsedStatus == 304)
        m_state = State::Complete;
    else if (m_chunked)
        m_state = State::ChunkSize;
    else if (!m_contentLength)
        m_state = State::UntilClose;
    else
        m_state = m_left == 0 ? State::Complete : State::Body;
}

void HttpResponseParser::takeChunkSize(const QByteArray& line) {
    const qsizetype extension = line.indexOf(';');
    const QByteArray digits = line.first(extension < 0 ? line.size() : extension).trimmed();
    bool valid = false;
    m_left = digits.toLongLong(&valid, 16);
    // toLongLong takes signs and a prefix, which are none of this.
    const bool plain = std::ranges::all_of(digits, [](char c) { return std::isxdigit(uchar(c)); });
    if (!valid || !plain) refuse();
    m_state = m_left == 0 ? State::Trailers : State::ChunkData;
}

} // namespace vorq
