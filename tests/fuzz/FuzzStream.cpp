// Any bytes as the body of a streamed reply: how the network cuts them must not matter.

#include "backend/api/AnalysisStream.h"
#include "backend/http/Errors.h"
#include "support/json/JsonWriter.h"

#include <QStringList>

#include <cstdint>
#include <cstdlib>
#include <random>

namespace {

using namespace vorq;

struct Reading {
    QStringList deltas;
    QByteArray analysis;
    QString error;

    bool operator==(const Reading&) const = default;
};

// Cuts the body into reads of up to `longest` bytes.
Reading read(QByteArrayView body, qsizetype longest, unsigned seed) {
    std::minstd_rand random(seed + 1);
    std::uniform_int_distribution<qsizetype> lengths(1, longest);
    Reading reading;
    AnalysisStream stream([&reading](const QString& text) { reading.deltas << text; });
    try {
        bool complete = false;
        while (!complete && !body.isEmpty()) {
            const qsizetype length = std::min(lengths(random), body.size());
            // A copy of its own, so that reading beyond it is found.
            complete = stream.feed(QByteArray(body.data(), length));
            body = body.sliced(length);
        }
        JsonWriter writer;
        const AIAnalysis analysis = stream.finish();
        encode(analysis, writer);
        reading.analysis = writer.take();
        if (displayText(analysis).isEmpty()) std::abort();
    } catch (const ServiceError& error) {
        reading.error = error.message();
        if (reading.error.isEmpty()) std::abort();
    }
    for (const QString& delta : reading.deltas) {
        if (delta.isEmpty()) std::abort();
    }
    return reading;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const QByteArrayView body(data + 1, static_cast<qsizetype>(size - 1));
    const Reading whole = read(body, std::max<qsizetype>(body.size(), 1), 0);
    if (read(body, 1, 0) != whole || read(body, 2 + data[0] % 64, data[0]) != whole) std::abort();
    return 0;
}
