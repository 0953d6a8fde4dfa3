// Any bytes as an HTTP response: how the network cuts them must not matter, and nothing of the body
// may come out that did not go in.

#include "backend/Errors.h"
#include "backend/HttpResponseParser.h"

#include <QByteArray>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>

namespace {

using namespace vorq;

struct Parsed {
    std::optional<int> status;
    QByteArray body;
    bool complete = false;

    bool operator==(const Parsed&) const = default;
};

// Nothing for what is refused, however far it was read.
std::optional<Parsed> parse(QByteArrayView bytes, qsizetype longest) {
    HttpResponseParser parser;
    Parsed parsed;
    try {
        for (qsizetype at = 0; at < bytes.size(); at += longest)
            parsed.body += parser.feed(bytes.sliced(at, std::min(longest, bytes.size() - at)));
        parser.end();
    } catch (const TransferError&) {
        return std::nullopt;
    }
    parsed.status = parser.status();
    parsed.complete = parser.isComplete();
    return parsed;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const QByteArrayView bytes(data + 1, static_cast<qsizetype>(size - 1));
    const std::optional<Parsed> whole = parse(bytes, std::max<qsizetype>(bytes.size(), 1));
    if (parse(bytes, 1) != whole || parse(bytes, 2 + data[0] % 64) != whole) std::abort();
    if (whole && (!whole->complete || !whole->status || whole->body.size() > bytes.size()))
        std::abort();
    return 0;
}
