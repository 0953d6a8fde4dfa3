#include "backend/HttpResponseParser.h"

#include "backend/Errors.h"

#include <gtest/gtest.h>

#include <vector>

namespace vorq {
namespace {

struct Parsed {
    std::optional<int> status;
    QByteArray body;
    bool complete = false;

    bool operator==(const Parsed&) const = default;
};

Parsed parse(const std::vector<QByteArray>& pieces, bool closed = false) {
    HttpResponseParser parser;
    Parsed parsed;
    for (const QByteArray& piece : pieces)
        parsed.body += parser.feed(piece);
    if (closed) parser.end();
    parsed.status = parser.status();
    parsed.complete = parser.isComplete();
    return parsed;
}

const QByteArray chunked =
    "HTTP/1.1 100 Continue\r\n\r\n"
    "HTTP/1.1 200 OK\r\nTransfer-Encoding: Chunked\r\nContent-Length: 3\r\n\r\n"
    "5\r\nhello\r\n1;name=value\r\n,\r\n06 \r\n world\r\n0\r\nTrailer: x\r\n\r\nbehind";

TEST(HttpResponseParser, ReadsABodyByItsLength) {
    EXPECT_EQ(parse({"HTTP/1.1 200 OK\r\ncontent-length:  5 \r\n\r\nhelloBEHIND"}),
              (Parsed{200, "hello", true}));
}

TEST(HttpResponseParser, ReadsABodyInChunks) {
    EXPECT_EQ(parse({chunked}), (Parsed{200, "hello, world", true}));
}

TEST(HttpResponseParser, ReadsABodyUntilTheConnectionEnds) {
    const QByteArray response = "HTTP/1.0 200\nServer: x\n\nhello";
    EXPECT_EQ(parse({response}), (Parsed{200, "hello", false}));
    EXPECT_EQ(parse({response}, true), (Parsed{200, "hello", true}));
}

TEST(HttpResponseParser, CuttingAResponseAnywhereChangesNothing) {
    const Parsed whole = parse({chunked});
    for (qsizetype at = 0; at <= chunked.size(); ++at)
        EXPECT_EQ(parse({chunked.first(at), chunked.sliced(at)}), whole) << at;
    std::vector<QByteArray> bytes;
    for (const char byte : chunked)
        bytes.emplace_back(1, byte);
    EXPECT_EQ(parse(bytes), whole);
}

TEST(HttpResponseParser, SomeResponsesHaveNoBody) {
    EXPECT_EQ(parse({"HTTP/1.1 204 No Content\r\n\r\n"}), (Parsed{204, "", true}));
    EXPECT_EQ(parse({"HTTP/1.1 304 x\r\nContent-Length: 9\r\n\r\n"}), (Parsed{304, "", true}));
    EXPECT_EQ(parse({"HTTP/1.1 500 x\r\nContent-Length: 0\r\n\r\n"}), (Parsed{500, "", true}));
}

TEST(HttpResponseParser, GivesTheStatusOnceTheHeadIsThere) {
    EXPECT_EQ(parse({"HTTP/1.1 404 Not Found\r\nA: b\r\n"}).status, std::nullopt);
    EXPECT_EQ(parse({"HTTP/1.1 404 Not Found\r\nA: b\r\n\r\n"}).status, 404);
}

TEST(HttpResponseParser, RefusesWhatIsNoResponse) {
    for (const char* response : {
             "SSH-2.0-x\r\n",
             "\r\n",
             "HTTP/2 200 OK\r\n",
             "HTTP/1.1 20 OK\r\n",
             "HTTP/1.1 2000\r\n",
             "HTTP/1.1 abc\r\n",
             "HTTP/1.1 101 Switching\r\n\r\n",
             "HTTP/1.1 200 OK\r\nContent-Length: x\r\n",
             "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n",
             "HTTP/1.1 200 OK\r\nContent-Length: 9999999999999999999\r\n",
             "HTTP/1.1 200 OK\r\nContent-Length: 1\r\nContent-Length: 2\r\n",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: gzip, chunked\r\n",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nx\r\n",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n\r\n",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n-1\r\n",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0x1\r\n",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nfffffffffffffffff\r\n",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\nab\r\n",
         })
        EXPECT_THROW(parse({response}), TransferError) << response;
}

TEST(HttpResponseParser, RefusesAHeadWithoutEnd) {
    HttpResponseParser parser;
    parser.feed("HTTP/1.1 200 OK\r\n");
    const QByteArray header = "X-Long: " + QByteArray(1000, 'x') + "\r\n";
    EXPECT_THROW(
        {
            for (int count = 0; count < 1000; ++count)
                parser.feed(header);
        },
        TransferError);
    HttpResponseParser line;
    EXPECT_THROW(line.feed(QByteArray(1 << 20, 'x')), TransferError);
}

TEST(HttpResponseParser, AConnectionThatEndsEarlyIsAnError) {
    for (const char* response : {
             "",
             "HTTP/1.1 200",
             "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhell",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhel",
             "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n",
         })
        EXPECT_THROW(parse({response}, true), TransferError) << response;
}

} // namespace
} // namespace vorq
