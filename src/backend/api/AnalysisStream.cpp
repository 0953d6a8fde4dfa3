#include "backend/api/AnalysisStream.h"

#include "backend/api/StreamChunk.h"
#include "backend/http/Errors.h"
#include "support/text/Text.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

// The memory for a longer line is given back after it.
constexpr qsizetype longKeptBuffer = qsizetype{1} << 20;

// How many bytes of white space or newline the UTF-8 text begins with.
qsizetype leadingSpace(QByteArrayView utf8) {
    const auto byte = [utf8](qsizetype index) {
        return index < utf8.size() ? static_cast<unsigned char>(utf8[index]) : 0;
    };
    const int first = byte(0);
    if (first < 0x80) return first != 0 && isWhitespaceOrNewline(char32_t(first)) ? 1 : 0;
    if (first == 0xC2) return isWhitespaceOrNewline(char32_t(byte(1))) && byte(1) >= 0x80 ? 2 : 0;
    if ((first & 0xF0) != 0xE0 || (byte(1) & 0xC0) != 0x80 || (byte(2) & 0xC0) != 0x80) return 0;
    const int character = (first & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
    return character >= 0x800 && isWhitespaceOrNewline(char32_t(character)) ? 3 : 0;
}

qsizetype trailingSpace(QByteArrayView utf8) {
    for (const qsizetype length : {1, 2, 3}) {
        if (length <= utf8.size() && leadingSpace(utf8.last(length)) == length) return length;
    }
    return 0;
}

QByteArrayView trimmedBytes(QByteArrayView utf8) {
    while (const qsizetype length = leadingSpace(utf8))
        utf8 = utf8.sliced(length);
    while (const qsizetype length = trailingSpace(utf8))
        utf8.chop(length);
    return utf8;
}

// Finds the ends of successive lines and looks at each byte twice at most.
class LineEnds {
  public:
    explicit LineEnds(QByteArrayView buffer) : m_buffer(buffer) {}

    // The first line end at or behind the position, or the size of the buffer.
    qsizetype next(qsizetype from) {
        if (m_lineFeed < from) m_lineFeed = find('\n', from);
        if (m_return < from) m_return = find('\r', from);
        return std::min(m_lineFeed, m_return);
    }

  private:
    qsizetype find(char wanted, qsizetype from) const {
        const auto length = static_cast<std::size_t>(m_buffer.size() - from);
        const void* found = std::memchr(m_buffer.data() + from, wanted, length);
        return found ? static_cast<const char*>(found) - m_buffer.data() : m_buffer.size();
    }

    QByteArrayView m_buffer;
    qsizetype m_lineFeed = -1;
    qsizetype m_return = -1;
};

} // namespace

AnalysisStream::AnalysisStream(OnDelta onDelta, std::stop_token stop)
    : m_onDelta(std::move(onDelta)),
      m_stop(std::move(stop)),
      m_decoder(std::make_unique<StreamChunkDecoder>()) {}

AnalysisStream::~AnalysisStream() = default;

bool AnalysisStream::feed(QByteArrayView bytes) {
    if (m_complete) return true;
    append(bytes);
    const QByteArrayView buffer(m_buffer);
    LineEnds ends(buffer);
    for (qsizetype from = m_scanned; !m_complete; from = m_lineStart) {
        const qsizetype end = ends.next(from);
        if (end == buffer.size()) break;
        const QByteArrayView line = buffer.sliced(m_lineStart, end - m_lineStart);
        m_lineStart = end + 1;
        if (!std::exchange(m_skippingLine, false)) takeLine(line);
    }
    dropTakenLines();
    return m_complete.has_value();
}

AIAnalysis AnalysisStream::finish() {
    if (!m_complete && !m_skippingLine) takeLine(QByteArrayView(m_buffer).sliced(m_lineStart));
    if (m_complete) return *std::move(m_complete);
    if (m_latest.isEmpty())
        throw ServiceError::requestFailed(u"The stream ended before Vorq sent a reply."_s);
    return {.summary = m_latest, .feedback = {}, .corrections = {}, .sources = {}, .followUp = {}};
}

void AnalysisStream::append(QByteArrayView bytes) {
    const qsizetype needed = m_buffer.size() + bytes.size() + StreamChunkDecoder::padding;
    if (m_buffer.capacity() < needed) m_buffer.reserve(std::max(needed, 2 * m_buffer.capacity()));
    m_buffer.append(bytes);
}

void AnalysisStream::dropTakenLines() {
    qsizetype rest = m_buffer.size() - m_lineStart;
    if (m_skippingLine || rest > longestLine) {
        m_skippingLine = true;
        rest = 0;
    }
    if (m_buffer.capacity() > longKeptBuffer && rest < longKeptBuffer / 4) {
        const QByteArray kept = m_buffer.last(rest);
        m_buffer = QByteArray();
        append(kept);
    } else if (m_lineStart > 0 || rest == 0) {
        std::memmove(m_buffer.data(), m_buffer.constData() + (m_buffer.size() - rest),
                     static_cast<std::size_t>(rest));
        m_buffer.resize(rest);
    }
    m_lineStart = 0;
    m_scanned = rest;
}

void AnalysisStream::takeLine(QByteArrayView line) {
    if (m_stop.stop_requested()) throw OperationCancelled();
    if (line.size() > longestLine) return;
    const QByteArrayView event = trimmedBytes(line);
    if (!event.startsWith("data:")) return;
    const QByteArrayView payload = trimmedBytes(event.sliced(5));
    if (payload.isEmpty() || payload == "[DONE]") return;
    if (std::optional<StreamChunk> chunk = m_decoder->decode(payload)) takeChunk(*chunk);
}

void AnalysisStream::takeChunk(StreamChunk& chunk) {
    if (chunk.error) {
        const QStringView sentence = trimmed(*chunk.error);
        if (!sentence.isEmpty()) throw ServiceError::requestFailed(sentence.toString());
    }
    if (chunk.text && !chunk.text->isEmpty()) {
        m_latest = *std::move(chunk.text);
        if (m_onDelta) m_onDelta(m_latest);
    }
    if (!chunk.done.value_or(false)) return;
    m_complete = AIAnalysis{
        .summary = std::move(chunk.summary).value_or(m_latest),
        .feedback = std::move(chunk.feedback).value_or(QString()),
        .corrections = std::move(chunk.corrections).value_or(QString()),
        .sources = std::move(chunk.sources).value_or(std::vector<AISource>()),
        .followUp = std::move(chunk.followUp),
    };
}

} // namespace vorq
